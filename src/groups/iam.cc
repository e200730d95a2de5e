// vektool iam: access management. The switch, the rule set (an opaque text
// the kernel parses, loaded after the gateway's time-zone offset so that
// time-based rules run on local time) and the redirection of blocked clients.
#include <cstdio>

#include "context.h"
#include "engine/interface.h"
#include "groups/frame.h"
#include "groups/groups.h"
#include "result.h"
#include "sys/lock.h"
#include "sys/procfs.h"
#include "sys/shell.h"
#include "sys/text.h"

namespace {

const char *g_rule_file;  // -f

int iam_on(int, char **) { return write_verb_ok(kIamEnabled, "1"); }
int iam_off(int, char **) { return write_verb_ok(kIamEnabled, "0"); }
int iam_get(int, char **) { return print_proc_text(kIamCtrl, false); }
int iam_get_content(int, char **) { return 0; }
int iam_get_rules(int, char **) { return print_proc_text(kPcRuleExport, false); }
int iam_clear_rules(int, char **) { return write_verb_ok(kPcRuleImport, "0"); }
int iam_enable_redirect(int, char **) { return write_verb_ok(kIamCtrl, "enable-redirect"); }
int iam_disable_redirect(int, char **) { return write_verb_ok(kIamCtrl, "disable-redirect"); }

// The engine's verb for the address is "set-redirect"; the text is passed on
// unchecked, as is the TTL.
int iam_set_redirect_ip(int argc, char **argv) {
  if (argc < 2) return wrong_arg_number(argc);
  write_proc_line(kIamCtrl, "set-redirect %s", argv[1]);
  return report_ok();
}

int iam_set_redirect_ttl(int argc, char **argv) {
  if (argc < 2) return wrong_arg_number(argc);
  write_proc_line(kIamCtrl, "set-redirect-ttl %s", argv[1]);
  return report_ok();
}

// Clear, time-zone offset, rules: in this order, so that the kernel reads the
// new rules in local time, and under the engine lock, so that two loads never
// interleave their rules. A rule file that cannot be read (or is no regular
// file) leaves the rules cleared and still reports done. A caller that cannot
// have the lock changes nothing and answers as for a rule file it could not
// read at all.
int iam_set_rules(int, char **) {
  if (!g_rule_file) return failed_to_read();
  EngineLock lock;
  if (!lock.take(g_context.config.run)) return failed_to_read();
  write_proc_line(kPcRuleImport, "0");
  // The capture gives an empty text when date printed nothing: the engine
  // must never see an empty offset.
  OwnedText offset = run_command_capture(0, "date +%z");
  if (offset && offset.get()[0] != '\0') write_proc_line(kPcTzOffset, "%s", offset.get());
  copy_file(kPcRuleImport, g_rule_file);
  return report_ok();
}

const char kUsage[] =
    "vektool iam [options] <command> [args]\0"
    "vektool iam on\0"
    "vektool iam off\0"
    "vektool iam get-rules\0"
    "vektool iam set-rules\0"
    "vektool iam enable-redirect\0"
    "vektool iam disable-redirect\0"
    "vektool iam set-redirect-ip <ip>\0"
    "vektool iam set-redirect-ttl <ttl>\0";

constexpr argparse_option kOptions[] = {
    OPT_HELP(),
    OPT_BOOLEAN(0, "json", &g_options.json, ""),
    OPT_STRING('f', nullptr, &g_rule_file, ""),
    OPT_END(),
};

constexpr CommandEntry kCommands[] = {
    {"on", iam_on},
    {"off", iam_off},
    {"get", iam_get},
    {"get-content", iam_get_content},
    {"get-rules", iam_get_rules},
    {"set-rules", iam_set_rules},
    {"clear-rules", iam_clear_rules},
    {"enable-redirect", iam_enable_redirect},
    {"disable-redirect", iam_disable_redirect},
    {"set-redirect-ip", iam_set_redirect_ip},
    {"set-redirect-ttl", iam_set_redirect_ttl},
};

}  // namespace

constexpr GroupFrame iam_frame = {kUsage, kOptions, kCommands, countof(kCommands),
                                  nullptr, nullptr, false, nullptr};

int iam_main(int argc, char **argv) { return group_run<iam_frame>(argc, argv); }

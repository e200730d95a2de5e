// vektool xdn: the group signature database (vek.xdb) in kmod_xdn.
#include "context.h"
#include "groups/dbcommands.h"
#include "groups/frame.h"
#include "groups/groups.h"

namespace {

const char *g_file;  // -f: the database file for load

int get(int, char **) { return db_get_command(kGroupDatabase); }
int load(int, char **) { return db_load_command(kGroupDatabase, g_context.config.var, g_file); }
int clear(int, char **) { return db_clear_command(kGroupDatabase); }

const char kUsage[] =
    "vektool xdn [options] <command> [args]\0"
    "vektool xdn get\0"
    "vektool xdn load [-f <file>]\0"
    "vektool xdn clear\0";

constexpr argparse_option kOptions[] = {
    OPT_HELP(),
    OPT_STRING('f', nullptr, &g_file, ""),
    OPT_BOOLEAN(0, "json", &g_options.json, ""),
    OPT_END(),
};

constexpr CommandEntry kCommands[] = {
    {"get", get},
    {"load", load},
    {"clear", clear},
};

}  // namespace

constexpr GroupFrame xdn_frame = {kUsage, kOptions, kCommands, countof(kCommands),
                                  nullptr, nullptr, false, nullptr};

int xdn_main(int argc, char **argv) { return group_run<xdn_frame>(argc, argv); }

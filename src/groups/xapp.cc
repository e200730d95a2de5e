// vektool xapp: the application signature database (app.xdb, in kmod_xdn)
// and the rule database (vek.xr, in kmod_xapp).
#include "context.h"
#include "groups/dbcommands.h"
#include "groups/frame.h"
#include "groups/groups.h"

namespace {

const char *g_file;  // -f: the database file for loadxdb and loadxr

int getxdb(int, char **) { return db_get_command(kAppDatabase); }
int getxr(int, char **) { return db_get_command(kRuleDatabase); }
int loadxdb(int, char **) { return db_load_command(kAppDatabase, g_context.config.var, g_file); }
int loadxr(int, char **) { return db_load_command(kRuleDatabase, g_context.config.var, g_file); }
int clearxdb(int, char **) { return db_clear_command(kAppDatabase); }
int clearxr(int, char **) { return db_clear_command(kRuleDatabase); }

const char kUsage[] =
    "vektool xapp [options] <command> [args]\0"
    "vektool xapp getxdb\0"
    "vektool xapp getxr\0"
    "vektool xapp loadxdb [-f <file>]\0"
    "vektool xapp loadxr [-f <file>]\0"
    "vektool xapp clearxdb\0"
    "vektool xapp clearxr\0";

constexpr argparse_option kOptions[] = {
    OPT_HELP(),
    OPT_STRING('f', nullptr, &g_file, ""),
    OPT_BOOLEAN(0, "json", &g_options.json, ""),
    OPT_END(),
};

constexpr CommandEntry kCommands[] = {
    {"getxdb", getxdb},
    {"getxr", getxr},
    {"loadxdb", loadxdb},
    {"loadxr", loadxr},
    {"clearxdb", clearxdb},
    {"clearxr", clearxr},
};

}  // namespace

constexpr GroupFrame xapp_frame = {kUsage, kOptions, kCommands, countof(kCommands),
                                   nullptr, nullptr, false, nullptr};

int xapp_main(int argc, char **argv) { return group_run<xapp_frame>(argc, argv); }

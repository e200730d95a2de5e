#include "context.h"

GlobalOptions g_options;
GlobalContext g_context;

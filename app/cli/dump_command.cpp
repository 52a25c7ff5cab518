#include "cli/cli.h"
int velmora::cli::RunDump(const QStringList&, Context& c) { return c.Fail("todo"); }
int velmora::cli::RunBuild(const QStringList&, Context& c) { return c.Fail("todo"); }

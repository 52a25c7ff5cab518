#pragma once

// velmora-cli: the configurator's logic without a window. Each command is a function over
// its arguments and injected output and error streams that returns the exit status; Run
// parses the global options and dispatches.

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include <QCommandLineParser>
#include <QStringList>

namespace velmora::cli {

enum ExitStatus : int {
    kExitOk = 0,
    kExitFailure = 1, // bad usage, an unusable input, a run-time error of the core
    kExitRefused = 3, // the channel check refused the export
};

struct Context {
    std::string appDirectory; // the application folder, without trailing separator
    std::ostream& out;
    std::ostream& err;

    // Writes "velmora-cli: MESSAGE" on the error stream and returns kExitFailure.
    int Fail(const std::string& message) const;
};

// Parses a command's own arguments into parser (whose options the caller has added), and
// answers --help with usage on the output stream. Returns the exit status when the command
// must stop there (help shown, or a parse error reported), nullopt to go on. With
// positionalCount >= 0, exactly that many positional arguments are required.
std::optional<int> ParseCommandArguments(QCommandLineParser& parser, const QStringList& args,
                                         const char* name, const char* usage, Context& context,
                                         int positionalCount = -1);

using CommandFunction = int (*)(const QStringList& args, Context& context);

struct Command {
    const char* name;
    const char* summary;
    CommandFunction run;
};

// Every command of the tool, in the order --help lists them.
const std::vector<Command>& Commands();

// Runs the tool on its arguments (without the program name). defaultAppDir is used unless
// --app-dir is given.
int Run(const QStringList& arguments, const std::string& defaultAppDir, std::ostream& out,
        std::ostream& err);

// The commands.
int RunDump(const QStringList& args, Context& context);
int RunBuild(const QStringList& args, Context& context);
int RunExport(const QStringList& args, Context& context);
int RunCheck(const QStringList& args, Context& context);
int RunShow(const QStringList& args, Context& context);
int RunEds(const QStringList& args, Context& context);
int RunLib(const QStringList& args, Context& context);

} // namespace velmora::cli

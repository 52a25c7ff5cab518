#pragma once

// Runs velmora-cli in-process with captured output and error streams.

#include "cli/cli.h"

#include <sstream>
#include <string>
#include <vector>

namespace velmora::test {

struct CliOutcome {
    int status;
    std::string out;
    std::string err;
};

inline CliOutcome RunCli(const std::vector<std::string>& args,
                         const std::string& appDir = "/opt/velmora") {
    QStringList list;
    for (const std::string& arg : args) {
        list << QString::fromStdString(arg);
    }
    std::ostringstream out;
    std::ostringstream err;
    const int status = cli::Run(list, appDir, out, err);
    return {status, out.str(), err.str()};
}

} // namespace velmora::test

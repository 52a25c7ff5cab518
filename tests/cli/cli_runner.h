#pragma once

// Runs velmora-cli in-process with captured output and error streams, or in a child process
// whose files cannot grow past a size.

#include "cli/cli.h"

#include <csignal>
#include <iterator>
#include <sstream>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
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

// Runs velmora-cli in a forked child whose files may not grow past `bytes`, as on a full disk:
// SIGXFSZ is ignored there, so a write past the limit fails with EFBIG. The child sends its
// outcome back through a pipe; status -1 when the child could not run or report.
inline CliOutcome RunCliWithFileSizeLimit(const std::vector<std::string>& args,
                                          const std::string& appDir, rlim_t bytes) {
    int channel[2];
    if (pipe(channel) != 0) {
        return {-1, "", "pipe"};
    }
    const pid_t child = fork();
    if (child == 0) {
        close(channel[0]);
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{bytes, bytes};
        const CliOutcome outcome = setrlimit(RLIMIT_FSIZE, &limit) == 0
                                       ? RunCli(args, appDir)
                                       : CliOutcome{-1, "", "setrlimit"};
        const std::string report = std::to_string(outcome.status) + "\n" +
                                   std::to_string(outcome.out.size()) + "\n" + outcome.out +
                                   outcome.err;
        for (std::size_t sent = 0; sent < report.size();) {
            const ssize_t done = write(channel[1], report.data() + sent, report.size() - sent);
            if (done <= 0) {
                break;
            }
            sent += static_cast<std::size_t>(done);
        }
        _exit(0);
    }
    close(channel[1]);
    std::string report;
    char buffer[4096];
    for (ssize_t got; (got = read(channel[0], buffer, sizeof buffer)) > 0;) {
        report.append(buffer, static_cast<std::size_t>(got));
    }
    close(channel[0]);
    int childStatus = 0;
    if (child < 0 || waitpid(child, &childStatus, 0) != child) {
        return {-1, "", "fork"};
    }
    std::istringstream in(report);
    int status = -1;
    std::size_t outSize = 0;
    in >> status >> outSize;
    in.get();
    std::string out(outSize, '\0');
    in.read(out.data(), static_cast<std::streamsize>(outSize));
    const std::string err(std::istreambuf_iterator<char>(in), {});
    return {status, out, err};
}

} // namespace velmora::test

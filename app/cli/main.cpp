// velmora-cli: parses the process's arguments and hands them to the command dispatcher.

#include "cli/cli.h"

#include <cstdlib>
#include <iostream>

#include <QCoreApplication>

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    const char* home = std::getenv("VELMORA_HOME");
    const std::string appDir = (home != nullptr && *home != '\0')
                                   ? std::string(home)
                                   : QCoreApplication::applicationDirPath().toStdString();
    return velmora::cli::Run(app.arguments().mid(1), appDir, std::cout, std::cerr);
}

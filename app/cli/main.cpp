// velmora-cli: parses the process's arguments and hands them to the command dispatcher.

#include "cli/cli.h"
#include "platform/app_directory.h"

#include <iostream>

#include <QCoreApplication>

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    // --app-dir, when given, is applied by Run over this default.
    const std::string appDir = velmora::ResolveAppDirectory(QString(), false);
    return velmora::cli::Run(app.arguments().mid(1), appDir, std::cout, std::cerr);
}

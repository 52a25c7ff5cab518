#pragma once

// The application folder of both programs: the folder named by --app-dir, else the one named
// by the environment variable VELMORA_HOME, else the folder of the executable. The window
// also looks for a ready folder when the executable's own has no eds/ (the program run from
// the build tree or installed under a prefix).

#include <string>

#include <QString>

namespace velmora {

// optionValue is the value of --app-dir, empty when the option was not given; its trailing
// separators are removed. VELMORA_HOME is used as it stands. With findData, an executable folder
// without eds/ gives way to the first of "../share/velmora" beside it and the repository's
// share/velmora that holds eds/.
std::string ResolveAppDirectory(const QString& optionValue, bool findData);

} // namespace velmora

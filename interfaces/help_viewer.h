#pragma once

// The help viewer: opens a page of the program's help in the system browser, without
// waiting and without checking that it exists. The app implements it; the pages live in the
// application folder's help/ folder.

#include <string>

namespace velmora {

namespace HelpPage {
inline constexpr const char* Main = "main.htm";          // "Guida in linea"
inline constexpr const char* MainWindow = "mainfrm.htm"; // F1 in the main window
inline constexpr const char* PdoEditor = "editPDO.htm";  // F1 in the PDO editor
inline constexpr const char* MappingEditor = "mapPDO.htm";
} // namespace HelpPage

class HelpViewer {
public:
    virtual ~HelpViewer() = default;
    virtual void OpenHelpPage(const std::string& page) = 0;
};

} // namespace velmora

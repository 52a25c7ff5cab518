#pragma once

// The viewers the window starts without waiting: the text viewer for the export copy (the
// program named by VELMORA_VIEWER, else the desktop's handler for the file) and the help
// pages of the application folder's help/ (the desktop's browser; when none can be started,
// a small help window of the program's own).

#include "interfaces/help_viewer.h"
#include "interfaces/text_viewer.h"

#include <QPointer>

class QWidget;
class QTextBrowser;

namespace velmora {

class QtTextViewer : public TextViewer {
public:
    void Open(const std::string& path) override;
};

class QtHelpViewer : public HelpViewer {
public:
    explicit QtHelpViewer(std::string appDirectory) : appDirectory_(std::move(appDirectory)) {}

    // The page's path: the application folder, "/help/", page.
    std::string PagePath(const std::string& page) const;
    void OpenHelpPage(const std::string& page) override;
    // Shows the page in the program's own help window (used when no browser starts).
    void ShowInOwnWindow(const std::string& page);

private:
    std::string appDirectory_;
    QPointer<QTextBrowser> window_;
};

} // namespace velmora

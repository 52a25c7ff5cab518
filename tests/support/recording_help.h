#pragma once

// A HelpViewer that records the pages it was asked to open, in order.

#include "interfaces/help_viewer.h"

#include <string>
#include <vector>

namespace velmora::test {

class RecordingHelp : public HelpViewer {
public:
    std::vector<std::string> pages;

    void OpenHelpPage(const std::string& page) override { pages.push_back(page); }
};

} // namespace velmora::test

#pragma once

// The system text viewer that "Mostra file finale" opens the export copy in. The application
// implements it (the program named by VELMORA_VIEWER, else the system's handler for the
// file); it starts the viewer without waiting and reports no failure.

#include <string>

namespace velmora {

class TextViewer {
public:
    virtual ~TextViewer() = default;
    virtual void Open(const std::string& path) = 0;
};

} // namespace velmora

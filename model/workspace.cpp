#include "model/workspace.h"

#include "model/paths.h"

namespace velmora {

std::string Workspace::EdsDirectory() const {
    return AppDirectory + kPathSeparator + "eds" + kPathSeparator;
}

} // namespace velmora

// The configured folder of the external suite.
#include "host/EntityCore/QuorvityApplicationData.h"

#include "host/FileSystem/OSPaths.h"

namespace EntityGUI {

QuorvityApplicationData::QuorvityApplicationData(const std::string & /*application*/)
    : toolsFolder_(FileSystem::OSPaths::getToolsFolder()) {
    if (!toolsFolder_.empty() && toolsFolder_.back() != '/') toolsFolder_ += '/';
}

} // namespace EntityGUI

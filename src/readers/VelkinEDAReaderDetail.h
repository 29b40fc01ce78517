// Shared by the files of VelkinEDAReader.
#pragma once

#include "host/Profiling/ProfileSectionProxy.h"

namespace EDA {

// A profile section of one read.
class VelkinEDASection : public Profiling::ProfileSectionProxy {
public:
    explicit VelkinEDASection(const char *name)
        : ProfileSectionProxy("VelkinEDAReader", __LINE__, "EDA::VelkinEDAReader::readFile", name, true, "") {
    }
};

} // namespace EDA

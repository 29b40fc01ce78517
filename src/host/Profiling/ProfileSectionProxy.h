// A scope whose duration a trace recorder notes. No effect on results, and next to no cost while no
// recorder runs.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace Profiling {

// Opens a section in its constructor and closes it in endSection or its destructor, so a section closes on
// every path. Sections of one thread nest.
//
//     Profiling::ProfileSectionProxy section("IDFReader", __LINE__, "EDA::IDFReader::readFile",
//                                            "ReadIDFFile", true, "");
class ProfileSectionProxy {
public:
    //   file, line, function  the place in the source; copied, may be null
    //   name                  what the section is called in a trace
    //   enabled               false: the section is not noted
    //   group                 the category in a trace; empty means the common one
    ProfileSectionProxy(const char *file, int line, const char *function, const std::string &name,
                        bool enabled, const std::string &group);
    ~ProfileSectionProxy();
    ProfileSectionProxy(const ProfileSectionProxy &) = delete;
    ProfileSectionProxy &operator=(const ProfileSectionProxy &) = delete;

    // Closes the section before its scope ends. A second call does nothing.
    void endSection();

private:
    struct Open;
    std::unique_ptr<Open> open_; // null while nothing is recorded
};

} // namespace Profiling

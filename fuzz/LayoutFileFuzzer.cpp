// Any bytes as a layout in text form; what was read is written, and reads back as the same.
#include "host/QvDbWrap/LayoutFile.h"
#include "ScratchFile.h"

#include <iterator>
#include <stdexcept>
#include <string_view>

namespace {

using namespace QvDbWrap;

std::string written(const Layout &layout, const std::string &name) {
    writeLayoutFile(layout, name);
    std::ifstream stream(std::filesystem::u8path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static const Fuzz::ScratchFile file(".qvd");
    LayoutLimits limits; // lower, so that a run does not wait for what they stop
    limits.points = 100'000;
    limits.records = 10'000;
    Layout layout;
    try {
        layout = parseLayout({reinterpret_cast<const char *>(data), size}, limits);
    } catch (const std::runtime_error &error) {
        if (std::string(error.what()).compare(0, 5, "line ") != 0) std::abort();
        return 0;
    }
    const std::string name = file.write(data, 0);
    const std::string text = written(layout, name); // whatever was read can be written
    if (written(parseLayout(text), name) != text) std::abort();
    return 0;
}

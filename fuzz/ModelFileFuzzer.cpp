// Any bytes as a model file. What loads must be written again to the same model.
#include "host/EntityModel/ModelFile.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

// What a broken promise looks like to the fuzzer.
void require(bool promise) {
    if (!promise) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    using EntityModel::ModelFile;
    std::string error;
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    const auto model = ModelFile::parse(text, "fuzz", error);
    require(model ? error.empty() : !error.empty());
    if (!model) return 0;
    const std::string written = ModelFile::toText(*model);
    const auto again = ModelFile::parse(written, "written", error);
    require(again && ModelFile::toText(*again) == written);
    return 0;
}

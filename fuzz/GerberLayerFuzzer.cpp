// Any bytes as a Gerber layer, with merging and without.
#include "GerberFuzz.h"
#include "readers/gerber/GerberReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static const Fuzz::ScratchFile file(".gbr");
    const std::string name = file.write(data, size);
    for (const bool merge : {false, true}) {
        EDA::GerberReader reader(Fuzz::smallLimits());
        reader.setMergeConductors(merge);
        const bool isRead = reader.readFile(name);
        Fuzz::require(isRead || !reader.getError().empty());
        Fuzz::requireFinite(reader.getBoard());
        reader.readFile(name); // from the point and the names of the first read
        Fuzz::requireFinite(reader.getBoard());
    }
    return 0;
}

// Any bytes as a drill file. The first two are the number format.
#include "GerberFuzz.h"
#include "readers/gerber/GerberReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    if (size < 2) return 0;
    static const Fuzz::ScratchFile file(".drl");
    const std::string name = file.write(data + 2, size - 2);
    EDA::GerberReader reader(Fuzz::smallLimits());
    reader.setViaNumberFormat(static_cast<std::int8_t>(data[0]), static_cast<std::int8_t>(data[1]));
    reader.setLayerArrangement({}, {QString::fromStdString(name), QString::fromStdString(name)}, {}, {});
    reader.readFiles(nullptr);
    Fuzz::requireFinite(reader.getBoard());
    return 0;
}

// A step of an IPC-2581 document: its profile and what it repeats.
#include "host/QvDbWrap/IpcStepReader.h"

#include "host/QvDbWrap/IpcXml.h"
#include "host/QvDbWrap/WrapperLog.h"

#include <algorithm>
#include <utility>

namespace QvDbWrap {

IpcStep IpcStepReader::read() {
    step_ = IpcStep();
    step_.name = xml_.text("name");
    step_.type = xml_.text("type");
    step_.stackup = xml_.text("stackupRef");
    xml_.eachChild([&] { readChild(); });
    return std::move(step_);
}

void IpcStepReader::readChild() {
    using Reader = void (IpcStepReader::*)();
    static constexpr std::pair<const char *, Reader> readers[] = {
        {"LayerFeature", &IpcStepReader::readLayerFeature}, {"Component", &IpcStepReader::readComponent},
        {"Package", &IpcStepReader::readPackage},           {"PadStackDef", &IpcStepReader::readPadstackDef},
        {"PadStack", &IpcStepReader::readPadstackInstance}, {"Profile", &IpcStepReader::readProfile},
        {"StepRepeat", &IpcStepReader::readRepeat},
    };
    for (const auto &[name, reader] : readers)
        if (xml_.is(name)) return (this->*reader)();
    context_.passOver();
}

// The edge first and the cut-outs after it, in whatever order the document has them.
void IpcStepReader::readProfile() {
    if (step_.hasProfile) return context_.log.warn("a step has more than one profile: the first is taken");
    std::vector<Ring> cutouts;
    xml_.eachChild([&] {
        const bool isEdge = xml_.is("Polygon");
        if (!isEdge && !xml_.is("Cutout")) return context_.passOver();
        Ring ring = context_.geometry.readRing(xml_);
        if (ring.size() < 3 || !context_.geometry.isUsable({Area{ring, {}}}) ||
            !context_.takePoints(ring.size()))
            return;
        if (isEdge && step_.profile.empty())
            step_.profile.push_back(std::move(ring));
        else if (isEdge)
            context_.log.warn("a profile has more than one polygon: the first is taken");
        else
            cutouts.push_back(std::move(ring));
    });
    step_.hasProfile = !step_.profile.empty();
    if (!step_.hasProfile) return context_.log.warn("a profile has no polygon");
    for (Ring &cutout : cutouts)
        step_.profile.push_back(std::move(cutout));
}

void IpcStepReader::readRepeat() {
    constexpr double most = 1000000;
    const auto count = [&](const char *attribute) {
        return static_cast<int>(std::clamp(xml_.number(attribute, 1), 1.0, most));
    };
    IpcRepeat repeat;
    repeat.step = xml_.text("stepRef");
    repeat.at = {context_.geometry.length(xml_, "x"), context_.geometry.length(xml_, "y")};
    repeat.dx = context_.geometry.length(xml_, "dx");
    repeat.dy = context_.geometry.length(xml_, "dy");
    repeat.nx = count("nx");
    repeat.ny = count("ny");
    repeat.rotation = xml_.number("angle", xml_.number("rotation"));
    repeat.isMirrored = xml_.flag("mirror");
    step_.repeats.push_back(repeat);
}

} // namespace QvDbWrap

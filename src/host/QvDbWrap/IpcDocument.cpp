// The frame of an IPC-2581 document: its root, contents, layers and steps.
#include "host/QvDbWrap/IpcDocument.h"

#include "host/QvDbWrap/IpcAssembly.h"
#include "host/QvDbWrap/IpcStepReader.h"
#include "host/QvDbWrap/IpcXml.h"
#include "host/QvDbWrap/WrapperLog.h"

#include <stdexcept>
#include <utility>

namespace QvDbWrap {

namespace {

constexpr const char *rootName = "IPC-2581";

class Reading {
public:
    Reading(IpcXml &xml, const IpcSettings &settings, WrapperLog &log)
        : xml_(xml), settings_(settings), log_(log), geometry_(log), context_{xml, geometry_, log},
          wanted_(IpcXml::shortened(settings.step)), layers_(context_) {}

    Layout read() {
        xml_.openRoot();
        if (!xml_.is(rootName))
            throw std::runtime_error("line " + std::to_string(xml_.line()) + ": the root element is " +
                                     xml_.name() + ", not " + rootName);
        tellRevision();
        xml_.eachChild([this] { readSection(); });
        IpcStep &step = chosenStep();
        log_.warn("a text of more than " + std::to_string(IpcXml::maxText) + " bytes is shortened",
                  xml_.numShortened());
        return IpcAssembly(context_, layers_, names_, steps_).assemble(step);
    }

private:
    void tellRevision() {
        const std::string revision = xml_.text("revision");
        if (revision.empty() || revision.find_first_of("ABCabc") != 0)
            log_.warn("revision \"" + revision + "\" is not known: it is read as revision C");
    }

    void readSection() {
        if (xml_.is("Content"))
            xml_.eachChild([this] { readContent(); });
        else if (xml_.is("Ecad"))
            xml_.eachChild([this] { readEcad(); });
        else
            context_.passOver();
    }

    void readContent() {
        if (xml_.is("StepRef"))
            stepRefs_.push_back(xml_.text("name"));
        else if (!geometry_.readDictionary(xml_))
            context_.passOver();
    }

    void readEcad() {
        if (xml_.is("CadHeader")) {
            geometry_.setMetresPerUnit(geometry_.metresPerUnit(xml_.text("units")));
            xml_.eachChild([this] { xml_.is("Spec") ? layers_.readSpec() : context_.passOver(); });
        } else if (xml_.is("CadData")) {
            xml_.eachChild([this] { readCadData(); });
        } else {
            context_.passOver();
        }
    }

    void readCadData() {
        if (xml_.is("Layer"))
            layers_.readLayer();
        else if (xml_.is("Stackup"))
            layers_.readStackup();
        else if (xml_.is("Step"))
            readStep();
        else
            context_.passOver();
    }

    // Once the board is read others are not needed; a panel needs them, before it and after it.
    void readStep() {
        const std::string name = xml_.text("name");
        if (steps_.count(name) != 0) return log_.warn("step " + name + " is there more than once");
        const auto wanted = steps_.find(wantedStep());
        if (wanted != steps_.end() && !IpcAssembly::isPanel(wanted->second)) {
            IpcStep &passed = steps_[name];
            passed.name = name;
        } else {
            IpcStepReader reader(context_, layers_, names_, settings_.useCourtyards);
            steps_[name] = reader.read();
        }
        stepOrder_.push_back(name);
    }

    std::string wantedStep() const {
        if (!wanted_.empty()) return wanted_;
        return stepRefs_.empty() ? std::string() : stepRefs_.front();
    }

    IpcStep &chosenStep() {
        if (stepOrder_.empty()) throw std::runtime_error("the document has no step");
        const auto wanted = steps_.find(wantedStep());
        if (wanted != steps_.end()) return wanted->second;
        if (!wanted_.empty()) throw std::runtime_error("the document has no step " + wanted_);
        if (!stepRefs_.empty()) log_.warn("step " + stepRefs_.front() + " of the contents is missing");
        for (const std::string &name : stepOrder_) {
            const std::string type = plainName(steps_[name].type);
            if (type.empty() || type == "BOARD") return steps_[name];
        }
        return steps_[stepOrder_.front()];
    }

    IpcXml &xml_;
    const IpcSettings &settings_;
    WrapperLog &log_;
    IpcGeometry geometry_;
    IpcContext context_;
    std::string wanted_; // step
    IpcLayers layers_;
    IpcNames names_;
    std::vector<std::string> stepRefs_;
    IpcSteps steps_;
    std::vector<std::string> stepOrder_;
};

} // namespace

bool isIpcDocument(const std::string &file) {
    try {
        IpcXml xml(file);
        xml.openRoot();
        return xml.is(rootName);
    } catch (const std::runtime_error &) {
        return false;
    }
}

Layout readIpcDocument(IpcXml &xml, const IpcSettings &settings, WrapperLog &log) {
    return Reading(xml, settings, log).read();
}

std::vector<std::string> stepsOfIpcDocument(const std::string &file) {
    std::vector<std::string> steps;
    if (!isIpcDocument(file)) return steps;
    IpcXml xml(file);
    xml.openRoot();
    xml.eachChild([&] {
        if (!xml.is("Ecad")) return;
        xml.eachChild([&] {
            if (!xml.is("CadData")) return;
            xml.eachChild([&] {
                if (xml.is("Step")) steps.push_back(xml.text("name"));
            });
        });
    });
    return steps;
}

} // namespace QvDbWrap

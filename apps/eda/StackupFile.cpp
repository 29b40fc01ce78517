// Reading a stack-up file.
#include "Stackup.h"

#include "Failure.h"
#include "Files.h"
#include "host/FileSystem/File.h"
#include "Printable.h"
#include "text/Text.h"

#include <rapidjson/document.h>
#include <rapidjson/error/en.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <set>
#include <string_view>

namespace EDATool {

namespace {

using rapidjson::Value;

constexpr const char *formatName = "eda-stackup";
constexpr const char *fileMembers[] = {"format", "version",           "units",
                                       "layers", "conductorMaterial", "dielectricMaterial"};
constexpr const char *conductorMembers[] = {"name", "kind", "thickness", "material", "filling", "coverage"};
constexpr const char *dielectricMembers[] = {"name", "kind", "thickness", "material"};

std::string_view textOf(const Value &value) { return {value.GetString(), value.GetStringLength()}; }

const char *kindOf(const Value &value) {
    switch (value.GetType()) {
    case rapidjson::kNullType:
        return "null";
    case rapidjson::kFalseType:
    case rapidjson::kTrueType:
        return "true or false";
    case rapidjson::kObjectType:
        return "an object";
    case rapidjson::kArrayType:
        return "a list";
    case rapidjson::kStringType:
        return "a text";
    case rapidjson::kNumberType:
        return "a number";
    }
    return "something else";
}

// One object of the file: its members by name, with messages that tell the place.
class Members {
public:
    Members(const std::string &file, std::string place, const Value &object)
        : file_(file), place_(std::move(place)), object_(object) {
        if (!object.IsObject()) fail(std::string("must be an object, not ") + kindOf(object));
    }

    [[noreturn]] void fail(const std::string &reason) const {
        throw DesignFailure(inQuotes(file_) + ": " + place_ + " " + reason);
    }

    template <class Names> void allow(const Names &names) const {
        std::set<std::string_view> seen;
        for (const auto &member : object_.GetObject()) {
            const std::string_view name = textOf(member.name);
            const bool isKnown = std::any_of(std::begin(names), std::end(names),
                                             [name](const char *known) { return name == known; });
            if (!isKnown) fail("has the unknown member " + inQuotes(shortened(name, 60)));
            if (!seen.insert(name).second) fail("has " + inQuotes(name) + " twice");
        }
    }

    const Value *find(const char *name) const {
        const auto found = object_.FindMember(name);
        return found == object_.MemberEnd() ? nullptr : &found->value;
    }

    const Value &get(const char *name) const {
        const Value *const value = find(name);
        if (value == nullptr) fail("has no " + inQuotes(name));
        return *value;
    }

    std::string text(const char *name) const {
        const Value *const value = find(name);
        return value == nullptr ? std::string() : std::string(textOf(textValue(name, *value)));
    }

    std::string neededText(const char *name) const { return std::string(textOf(textValue(name, get(name)))); }

    double number(const char *name, const Value &value) const {
        if (!value.IsNumber()) fail(inQuotes(name) + " must be a number, not " + kindOf(value));
        return value.GetDouble();
    }

private:
    const Value &textValue(const char *name, const Value &value) const {
        if (!value.IsString()) fail(inQuotes(name) + " must be a text, not " + kindOf(value));
        if (textOf(value).find('\0') != std::string_view::npos) fail(inQuotes(name) + " has a NUL in it");
        return value;
    }

    const std::string &file_;
    std::string place_;
    const Value &object_;
};

StackupLayer readLayer(const Members &members) {
    StackupLayer layer;
    const std::string kind = members.neededText("kind");
    if (kind != "conductor" && kind != "dielectric")
        members.fail("is of the unknown kind " + inQuotes(shortened(kind, 60)) +
                     "; it takes \"conductor\" or \"dielectric\"");
    layer.isConductor = kind == "conductor";
    layer.isConductor ? members.allow(conductorMembers) : members.allow(dielectricMembers);
    layer.name = members.text("name");
    layer.thickness = members.number("thickness", members.get("thickness"));
    if (!(layer.thickness > 0.0)) members.fail("has a 'thickness' that is not above 0");
    layer.material = members.text("material");
    layer.filling = members.text("filling");
    if (const Value *const coverage = members.find("coverage")) {
        layer.coverage = members.number("coverage", *coverage);
        // A model takes 0 for a share that is not known.
        if (!(layer.coverage > 0.0 && layer.coverage <= 100.0))
            members.fail("has a 'coverage' that is no percentage above 0 and up to 100");
    }
    return layer;
}

// A name stands for one conductor, so none may be there twice; all conductors have one, or none has.
void checkNames(const Stackup &stackup) {
    std::set<std::string, bool (*)(const std::string &, const std::string &)> names(
        [](const std::string &a, const std::string &b) { return EDA::lessIgnoreCase(a, b); });
    std::size_t number = 0;
    std::size_t numNamed = 0;
    for (const StackupLayer &layer : stackup.layers) {
        ++number;
        if (!layer.isConductor || layer.name.empty()) continue;
        ++numNamed;
        if (!names.insert(layer.name).second)
            throw DesignFailure(inQuotes(stackup.file) + ": layer " + std::to_string(number) +
                                " has the name " + inQuotes(shortened(layer.name, 60)) +
                                " of a conductor above it");
    }
    if (numNamed != 0 && numNamed != stackup.numConductors())
        throw DesignFailure(inQuotes(stackup.file) + ": " + std::to_string(numNamed) + " of the " +
                            std::to_string(stackup.numConductors()) +
                            " conductors have names; all must have one, or none");
}

Stackup readObject(const std::string &file, const Value &root) {
    const Members members(file, "the stack-up", root);
    members.allow(fileMembers);
    if (members.neededText("format") != formatName)
        members.fail(std::string("has not the format \"") + formatName + "\"");
    if (members.number("version", members.get("version")) != 1.0)
        members.fail("has another version than 1, which is the one that can be read");
    Stackup stackup;
    stackup.file = file;
    const std::string units = members.neededText("units");
    stackup.unit = EntityModel::Units::find(*EntityModel::Units::findQuantity("Length"), units);
    if (stackup.unit == nullptr)
        members.fail("has the units " + inQuotes(shortened(units, 60)) +
                     ", which are no known unit of length");
    stackup.conductorMaterial = members.text("conductorMaterial");
    stackup.dielectricMaterial = members.text("dielectricMaterial");
    const Value &layers = members.get("layers");
    if (!layers.IsArray()) members.fail(std::string("'layers' must be a list, not ") + kindOf(layers));
    if (layers.Size() > StackupLimits::layers)
        members.fail("has more than " + std::to_string(StackupLimits::layers) + " layers");
    std::size_t number = 0;
    for (const Value &layer : layers.GetArray())
        stackup.layers.push_back(readLayer(Members(file, "layer " + std::to_string(++number), layer)));
    if (stackup.numConductors() == 0) members.fail("has no conductor among its layers");
    checkNames(stackup);
    return stackup;
}

} // namespace

std::size_t Stackup::numConductors() const {
    return static_cast<std::size_t>(std::count_if(
        layers.begin(), layers.end(), [](const StackupLayer &layer) { return layer.isConductor; }));
}

Stackup readStackup(const std::string &file) {
    readHead(file); // tells a missing, empty or unreadable one
    std::string text, error;
    if (!FileSystem::File::readAll(file, text, error, StackupLimits::fileSize))
        throw DesignFailure(printable(error));
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (text.compare(0, mark.size(), mark) == 0) text.erase(0, mark.size());
    // Nesting is walked without recursion, however deep it is, and what is nested where it must not be is
    // refused by its kind.
    rapidjson::Document document;
    document.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag>(text.data(),
                                                                                           text.size());
    // A NUL byte ends the text for the JSON reader.
    const std::size_t end = document.HasParseError() ? document.GetErrorOffset() : text.find('\0');
    if (end == std::string::npos) return readObject(file, document);
    const auto line = 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(end), '\n');
    throw DesignFailure(inQuotes(file) + ": line " + std::to_string(line) + ": " +
                        (document.HasParseError() ? rapidjson::GetParseError_En(document.GetParseError())
                                                  : "there is a NUL byte in the text"));
}

} // namespace EDATool

// Classification: which entity type a component becomes, and the map that the user edits.
#include "import/EDAImporterDetail.h"

#include "host/FileSystem/FFofstream.h"

#include <string_view>
#include <unordered_map>
#include <utility>

namespace EDA {

using namespace EntityModel;

// What the designators of a component's placements have in common, found once for all components that share
// their placements: a design may define a hundred thousand parts of one name.
class EDAImporter::DesignatorPrefixes {
public:
    explicit DesignatorPrefixes(const EDABoard &board) : board_(board) {}

    // Empty without placements, and where they differ.
    const std::string &of(const EDAComponent &component) {
        const auto [entry, isNew] = prefixes_.try_emplace(keyOf(component));
        if (isNew) entry->second = find(component);
        return entry->second;
    }

private:
    // Tells what placements a component has: those of its name and part number, those of its name, or none.
    std::string keyOf(const EDAComponent &component) const {
        std::string key;
        board_.visitComponentPlacements(component, [&](const EDAComponentPlacement &first) {
            const bool isOfPart = first.getPartNumber() == component.getPartNumber();
            key = std::to_string(component.getName().size()) + ' ' + component.getName();
            if (isOfPart) key += ' ' + component.getPartNumber();
            return false;
        });
        return key;
    }

    // The text up to the first decimal digit. Bytes of other than ASCII characters are never digits.
    static std::string_view prefixOf(std::string_view designator) {
        return designator.substr(0, designator.find_first_of("0123456789"));
    }

    // Intended: an empty prefix ("1X") gives way to a later one, but contradicts an earlier one.
    std::string find(const EDAComponent &component) const {
        std::string common;
        board_.visitComponentPlacements(component, [&common](const EDAComponentPlacement &placement) {
            const std::string_view prefix = prefixOf(placement.getReferenceDesignator());
            if (common.empty()) {
                common = prefix;
            } else if (common != prefix) {
                common.clear();
                return false;
            }
            return true;
        });
        return common;
    }

    const EDABoard &board_;
    std::unordered_map<std::string, std::string> prefixes_;
};

namespace {

const char *const plainComponent = "Component";

} // namespace

void EDAImporter::setTypeMap(const std::map<std::string, std::string> &map) {
    typeMap_ = map;
    if (typeMapFile_.empty()) return;
    FileSystem::FFofstream file(typeMapFile_);
    for (const auto &[prefix, type] : typeMap_)
        file << prefix << ',' << type << '\n';
}

std::string EDAImporter::getComponentType(const EDAComponent &component, const EDABoard &board,
                                          Entity *parent) const {
    DesignatorPrefixes prefixes(board);
    return decideType(component, parent, prefixes);
}

std::vector<std::string> EDAImporter::getTypesOfComponents(const EDABoard &board, Entity *parent) const {
    DesignatorPrefixes prefixes(board);
    std::vector<std::string> types;
    types.reserve(board.numComponents());
    for (auto component = board.beginComponents(); component != board.endComponents(); ++component) {
        types.push_back(decideType(*component, parent, prefixes));
    }
    return types;
}

std::string EDAImporter::decideType(const EDAComponent &component, const Entity *parent,
                                    DesignatorPrefixes &prefixes) const {
    if (!hasOutline(component)) return "No Geometry";
    std::string type = typeFromLibrary(component);
    if (!type.empty()) return type;
    if (parent && parent->getType() == Substrate_t) return plainComponent;
    type = getComponentTypeFromProperties(component);
    if (!type.empty()) return type;
    const std::string &prefix = prefixes.of(component);
    const auto mapped = prefix.empty() ? typeMap_.end() : typeMap_.find(prefix);
    return mapped != typeMap_.end() ? mapped->second : plainComponent;
}

std::string EDAImporter::typeFromLibrary(const EDAComponent &component) const {
    if (!libraryInterface_) return "";
    LibraryInterface::Attributes attributes;
    LibraryInterface::MappingType mapping = LibraryInterface::NotMapped;
    LibraryItem *const item = libraryInterface_->findItem(component.getName(), "", true, attributes, mapping);
    if (mapping == LibraryInterface::DoNotImport) return "DO NOT IMPORT";
    const Entity *const entity = item && mapping == LibraryInterface::Mapped ? item->getEntity() : nullptr;
    const Attribute *const type = entity ? entity->readAttribute(Type_t) : nullptr;
    // Intended: it is given as it stands ("Electrical"), whatever types the import knows.
    std::string text;
    return type ? type->getString(text) : text;
}

std::string EDAImporter::getComponentTypeFromProperties(const EDAComponent &component) {
    std::string type;
    if (hasProperty(component, "4ZETA_TYPE", type)) return type == "Chip" ? plainComponent : type;
    static const std::pair<const char *, const char *> typesOfQuantities[] = {
        {"RESISTANCE", "Resistor"}, {"CAPACITANCE", "Capacitor"}, {"INDUCTANCE", "Inductor"}};
    for (const auto &[name, typeOfQuantity] : typesOfQuantities) {
        std::string value;
        if (hasProperty(component, name, value)) return typeOfQuantity;
    }
    return has2RProperties(component) ? plainComponent : "";
}

void EDAImporter::populateImportMap(
    const EDABoard &board, std::map<std::string, LibraryManager::LibraryItemMapRecord> &records) const {
    if (!libraryInterface_) return;
    for (auto component = board.beginComponents(); component != board.endComponents(); ++component) {
        const std::string key = libraryKey(*component);
        std::string name, path;
        LibraryInterface::MappingType mapping = LibraryInterface::NotMapped;
        libraryInterface_->getMapping(name, key, path, mapping);
        LibraryManager::LibraryItemMapRecord record(name);
        record.setPath(path);
        record.setMappingType(mapping);
        const std::string &partNumber = component->getPartNumber();
        record.addAttribute("Part Number", partNumber, !partNumber.empty());
        records.emplace(key, std::move(record));
    }
}

} // namespace EDA

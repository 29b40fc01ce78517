// What became of the placements of a design in the model.
#include "PartSummary.h"

#include "host/EntityModel/Types.h"
#include "PartFinder.h"
#include "text/Text.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <unordered_map>

namespace EDATool {

using namespace EntityModel;

namespace {

enum class Mapping { None, Mapped, Approximated, LeftOut };

// As the import asks: the name, then the name with the part number. Each component is looked up once.
class Mappings {
public:
    explicit Mappings(LibraryInterface *library) : library_(library) {}

    Mapping of(const EDA::EDAComponent &component) {
        if (library_ == nullptr) return Mapping::None;
        const auto [entry, isNew] = known_.emplace(&component, Mapping::None);
        if (!isNew) return entry->second;
        Mapping mapping = lookUp(component.getName());
        if (mapping == Mapping::None && !component.getPartNumber().empty())
            mapping = lookUp(component.getName() + " " + component.getPartNumber());
        return entry->second = mapping;
    }

private:
    Mapping lookUp(const std::string &key) const {
        LibraryInterface::Attributes attributes;
        auto type = LibraryInterface::NotMapped;
        const LibraryItem *const item = library_->findItem(key, "", false, attributes, type);
        if (item == nullptr) return type == LibraryInterface::DoNotImport ? Mapping::LeftOut : Mapping::None;
        return type == LibraryInterface::Approximated ? Mapping::Approximated : Mapping::Mapped;
    }

    LibraryInterface *library_;
    std::unordered_map<const EDA::EDAComponent *, Mapping> known_;
};

// In watts. Of a property that is there twice the last value counts, as in the import.
double designPower(const EDA::EDAComponent &component, bool &isGiven) {
    double power = 0.0;
    isGiven = false;
    for (auto property = component.beginProperties(); property != component.endProperties(); ++property) {
        if (property->first != "POWER_OPR" || property->second.empty()) continue;
        power = EDA::parseDouble(property->second, 0.0, 0.0) * 1e-3;
        isGiven = true;
    }
    return power;
}

bool hasDefaultMaterial(const Entity &material) {
    std::string name;
    material.getName(name);
    return name == "Typical Component" || name == "ABS-Plastic";
}

bool differ(double a, double b) { return std::abs(a - b) > 1e-6 * std::max(std::abs(a), std::abs(b)); }

bool hasShape(const EDA::EDAComponent &component) {
    return component.hasGeometry() || component.getOutline().numInternalOutlines() > 0;
}

class Walk {
public:
    explicit Walk(const ImportResult &result)
        : result_(result), mappings_(result.library), finder_(result.boardEntity, result.firstNewId) {}

    PartSummary run() {
        const EDA::EDABoard &board = result_.board;
        summary_.placements = board.numComponentPlacements();
        for (auto placement = board.beginPlacements(); placement != board.endPlacements(); ++placement)
            visit(*placement);
        for (const Entity *part : finder_.parts()) {
            PowerSums &power = summary_.power;
            (PartFinder::isFiltered(*part) ? power.filtered : power.inModel) += PartFinder::powerOf(*part);
        }
        findDuplicates();
        return std::move(summary_);
    }

private:
    void visit(const EDA::EDAComponentPlacement &placement) {
        const std::string &designator = placement.getReferenceDesignator();
        const EDA::EDAComponent *const component = result_.board.findComponent(placement);
        if (component == nullptr) {
            summary_.withoutDefinition.add(designator + " (" + placement.getName() + " " +
                                           placement.getPartNumber() + ")");
            return;
        }
        if (!placement.isPlaced()) {
            summary_.notPlaced.add(designator);
            return;
        }
        bool hasPower = false;
        const double power = designPower(*component, hasPower);
        summary_.power.inDesign += power;
        const Entity *const part =
            hasShape(*component) ? finder_.take(designator, component->isFiltered()) : nullptr;
        if (part == nullptr) {
            reasonFor(*component).add(designator);
            summary_.power.leftOut += power;
            return;
        }
        count(*part, designator);
        countGaps(*component, *part, designator);
        if (hasPower && differ(power, PartFinder::powerOf(*part))) summary_.otherPower.add(designator);
    }

    // Why a placed component is not in the model.
    NamedCount &reasonFor(const EDA::EDAComponent &component) {
        if (!hasShape(component)) return summary_.withoutShape;
        if (mappings_.of(component) == Mapping::LeftOut) return summary_.leftOutByLibrary;
        if (component.isFiltered()) return summary_.filteredOut;
        return result_.wasCancelled ? summary_.notReached : summary_.notMade;
    }

    void count(const Entity &part, const std::string &designator) {
        if (PartFinder::isFiltered(part))
            summary_.filteredKept.add(designator);
        else
            ++summary_.imported[part.getType().getLabel()];
        if (PartFinder::isInSocket(part)) ++summary_.inSockets;
    }

    void countGaps(const EDA::EDAComponent &component, const Entity &part, const std::string &designator) {
        const Mapping mapping = mappings_.of(component);
        const bool isFromLibrary = mapping == Mapping::Mapped || mapping == Mapping::Approximated;
        if (isFromLibrary) ++summary_.fromLibrary;
        if (mapping == Mapping::Approximated) ++summary_.approximated;
        if (!isFromLibrary && !(component.getHeight() > 0.0)) summary_.withoutHeight.add(designator);
        if (PartFinder::powerOf(part) == 0.0) summary_.withoutPower.add(designator);
        const Entity *const material = getLinkedEntity(&part, MaterialLink_t);
        if (material == nullptr)
            summary_.withoutMaterial.add(designator);
        else if (hasDefaultMaterial(*material))
            ++summary_.withDefaultMaterial;
    }

    void findDuplicates() {
        std::map<std::string, std::size_t> uses;
        const EDA::EDABoard &board = result_.board;
        for (auto placement = board.beginPlacements(); placement != board.endPlacements(); ++placement) {
            if (!placement->getReferenceDesignator().empty()) ++uses[placement->getReferenceDesignator()];
        }
        for (const auto &[designator, number] : uses) {
            if (number > 1) summary_.duplicates.add(designator + " (" + std::to_string(number) + " times)");
        }
    }

    const ImportResult &result_;
    Mappings mappings_;
    PartFinder finder_;
    PartSummary summary_;
};

} // namespace

std::size_t PartSummary::numImported() const {
    std::size_t total = 0;
    for (const auto &[type, count] : imported)
        total += count;
    return total;
}

PartSummary summarizeParts(const ImportResult &result) { return Walk(result).run(); }

} // namespace EDATool

// Vias and other drilled holes.
#include "import/EDAImporterDetail.h"
#include "import/ViaMoves.h"

#include <cmath>

namespace EDA {

using namespace EntityModel;

namespace {

constexpr double roundness = 0.001;   // Of the diameter: a hole that is longer by this is not round.
constexpr double negligible = 1e-9;   // A length in board units.
constexpr double usualPlating = 35.0; // micron

// The definition's own place and those of its instances.
template <typename Visit> void forEachPlace(const EDAVia &via, const Visit &visit) {
    visit(via.getXCentre(), via.getYCentre());
    const int count = static_cast<int>(via.numInstances());
    for (int i = 0; i < count; ++i)
        visit(via.getInstanceXCentre(i), via.getInstanceYCentre(i));
}

} // namespace

class EDAImporter::ViaMaker {
public:
    ViaMaker(const EDAImporter &importer, Entity *boardEntity, const EDAVia &via, const EDABoard &board)
        : importer_(importer), boardEntity_(boardEntity), via_(via), board_(board) {}

    enum class Kind { LeftOut, BoardHole, Slot, Via };
    Kind classify() const;

    void addBoardHoles() const;
    void addSlots() const;
    void addVias(ViaMoves &moves) const;

private:
    bool isRound() const;
    void setPlace(Entity *entity, double x, double y) const;
    void describe(Entity *entity) const;
    void setPlating(Entity *entity) const;
    void setSpan(Entity *entity) const;
    Entity *findPart() const;
    std::vector<Entity *> copyInstances(Entity *source) const;
    void groupInstances(Entity *entity) const;
    std::vector<double> placements(double xLow, double yHigh) const; // x and z in turns

    const EDAImporter &importer_;
    Entity *boardEntity_;
    const EDAVia &via_;
    const EDABoard &board_;
};

void EDAImporter::addVia(Entity *boardEntity, const EDAVia &via, const EDABoard &board,
                         ViaMoves &moves) const {
    const ViaMaker maker(*this, boardEntity, via, board);
    switch (maker.classify()) {
    case ViaMaker::Kind::LeftOut:
        return;
    case ViaMaker::Kind::BoardHole:
        return maker.addBoardHoles();
    case ViaMaker::Kind::Slot:
        return maker.addSlots();
    case ViaMaker::Kind::Via:
        return maker.addVias(moves);
    }
}

// Intended: mounting and tool holes come whatever the options on vias say, and holes of other kinds, such as
// those of old files that name none, never.
EDAImporter::ViaMaker::Kind EDAImporter::ViaMaker::classify() const {
    const Options &options = importer_.options_;
    if (options.importVias && (via_.isThermalVia() || via_.isPin())) {
        if (!options.importNonPlatedVias && !via_.isPlated()) return Kind::LeftOut;
        return isRound() ? Kind::Via : Kind::Slot;
    }
    return via_.isMountingHole() || via_.isToolHole() ? Kind::BoardHole : Kind::LeftOut;
}

bool EDAImporter::ViaMaker::isRound() const {
    const EDAOutline &outline = via_.getOutline();
    if (outline.numPoints() == 0) return true;
    outline.setModelDimension(importer_.modelDimension_);
    const double width = outline.getBound().getXSize();
    const double depth = outline.getBound().getYSize();
    // The difference of two decimals may come out a little small, and just the limit is a slot.
    const double rounding = 1e-12 * (width + depth);
    return !(std::fabs(width - depth) >= roundness * via_.getDiameter() - rounding);
}

void EDAImporter::ViaMaker::setPlace(Entity *entity, double x, double y) const {
    setLocation(entity, importer_.mapX(x), mapZCoord(importer_.mapY(y)), board_);
}

// Round holes of the board, "PCB Hole" on a "PCB", whatever outline the drill has.
void EDAImporter::ViaMaker::addBoardHoles() const {
    if (!boardEntity_) return;
    const TypeRef type(boardEntity_->getType().getLabel() + " Hole");
    forEachPlace(via_, [&](double x, double y) {
        Entity *const hole = EntityEditor::createEntity(type, boardEntity_, AttributePath("Holes"), nullptr,
                                                        !importer_.boardEntityCreated_, true, false, "", -1);
        if (!hole) return;
        EntityEditor::setValue(hole, Shape_t, "Cylinder", true);
        setLength(hole, Diameter_t, via_.getDiameter(), board_);
        setPlace(hole, x, y);
        lockData(hole, {Geometry_t, Placement_t});
    });
}

// Intended: a slot with a bad outline is left out without a message.
void EDAImporter::ViaMaker::addSlots() const {
    forEachPlace(via_, [this](double x, double y) {
        importer_.addHole(boardEntity_, via_.getOutline(), board_, x, y, via_.getAngle());
    });
}

void EDAImporter::ViaMaker::addVias(ViaMoves &moves) const {
    const bool isNamed = !via_.getName().empty();
    Entity *const entity = EntityEditor::createEntity(Via_t, boardEntity_, AttributePath(Vias_t), nullptr,
                                                      !importer_.boardEntityCreated_, true, false,
                                                      isNamed ? via_.getName() : moves.numberedName(), -1);
    if (!entity) return;
    tellGeometryEditor(entity);
    describe(entity);
    std::vector<Entity *> all{entity};
    if (!importer_.options_.groupIdenticalVias) {
        const std::vector<Entity *> copies = copyInstances(entity);
        all.insert(all.end(), copies.begin(), copies.end());
    } else if (via_.numInstances() > 0) {
        groupInstances(entity);
    }
    for (Entity *via : all)
        lockData(via, {Geometry_t, Placement_t, Number_Of_Vias_t});
    // The first copy has the name that the definition began with.
    moves.add(all, findPart(), isNamed ? nullptr : all[all.size() > 1 ? 1 : 0]);
}

void EDAImporter::ViaMaker::describe(Entity *entity) const {
    setLength(entity, Diameter_t, via_.getDiameter(), board_);
    setPlace(entity, via_.getXCentre(), via_.getYCentre());
    setPlating(entity);
    if (!importer_.options_.ignoreFillMaterial && !via_.getFillMaterial().empty()) {
        EntityEditor::setValue(entity, Filled_t, "Yes", true);
        importer_.attachDefaultMaterial(entity, "", via_.getFillMaterial(), Fill_Material_t, true);
    }
    setSpan(entity);
}

void EDAImporter::ViaMaker::setPlating(Entity *entity) const {
    static const AttributePath thickness("Plating Thickness");
    EntityEditor::setValue(entity, Plated_t, via_.isPlated() ? "Yes" : "No", true);
    if (!via_.isPlated()) return;
    if (via_.getPlatingThickness() <= negligible) {
        setNumber(entity, thickness, usualPlating, "micron");
    } else {
        setLength(entity, thickness, via_.getPlatingThickness(), board_);
    }
}

// Intended: layers win over numbers, which stay beside them. A via that ends below where it begins gets no
// height, since none is negative.
void EDAImporter::ViaMaker::setSpan(Entity *entity) const {
    double low = 0.0, high = 0.0;
    via_.getZDimensions(low, high);
    if (std::fabs(high - low) > negligible) {
        EntityEditor::setValue(entity, Height_From_t, "User Specified", true);
        setLength(entity, Height_t, high - low, board_);
        setLength(entity, Y_Location_t, low, board_);
    }
    std::string from, to;
    via_.getLayers(from, to);
    if (from.empty() || to.empty()) return;
    EntityEditor::setValue(entity, Height_From_t, "Layers", true);
    EntityEditor::setValue(entity, From_Layer_t, from, true);
    EntityEditor::setValue(entity, To_Layer_t, to, true);
}

EDAImporter::Entity *EDAImporter::ViaMaker::findPart() const {
    const std::string &designator = via_.getAssociatedPart();
    if (designator.empty() || designator == "BOARD") return nullptr;
    const auto found = importer_.placedComponents_.find(designator);
    return found == importer_.placedComponents_.end() ? nullptr : found->second;
}

std::vector<EDAImporter::Entity *> EDAImporter::ViaMaker::copyInstances(Entity *source) const {
    Attribute *const list = boardEntity_->findAttribute(Vias_t, false);
    std::vector<Entity *> copies;
    const int count = static_cast<int>(via_.numInstances());
    for (int i = 0; i < count; ++i) {
        Entity *const copy =
            EntityEditor::copyEntity(source, boardEntity_, list, !importer_.boardEntityCreated_);
        if (!copy) continue;
        // Intended: the source takes the name of the instance and the copy keeps the one before, so that the
        // names stand in the order of the list from the second via on, and the source has the last.
        EntityEditor::setValue(source, Name_t, via_.getInstanceName(i), true);
        setPlace(copy, via_.getInstanceXCentre(i), via_.getInstanceYCentre(i));
        copies.push_back(copy);
    }
    return copies;
}

// One entity stands for all. Its place becomes the low-x, high-y corner of the bound around them, which the
// places of the single vias count from. Without a bound, as without a diameter that is a number, place and
// size stay as they are, and the places count from that of the definition.
void EDAImporter::ViaMaker::groupInstances(Entity *entity) const {
    EntityEditor::setValue(entity, Modelling_Type_t, Multiple_Vias_t.getLabel(), true);
    EntityEditor::setValue(entity, Render_Style_t, "Invisible", true);
    Geometry::Bound2D bound;
    via_.getBound(bound);
    const bool hasBound = bound.isValid();
    if (hasBound) {
        setLength(entity, Width_t, bound.getXSize(), board_);
        setLength(entity, Depth_t, bound.getYSize(), board_);
        setPlace(entity, bound.getXLow(), bound.getYHigh());
    }
    setOutlinePoints(entity, Instance_Placements_t,
                     hasBound ? placements(bound.getXLow(), bound.getYHigh())
                              : placements(via_.getXCentre(), via_.getYCentre()),
                     board_.getUnits());
    EntityEditor::setValue(entity, Number_Of_Vias_t, std::to_string(via_.numInstances() + 1), true);
    setLength(entity, "Via Diameter", via_.getDiameter(), board_);
}

// One that is no number would spoil the list, and with it the places of the others: so it is left out.
std::vector<double> EDAImporter::ViaMaker::placements(double xLow, double yHigh) const {
    std::vector<double> numbers;
    numbers.reserve(2 * (via_.numInstances() + 1));
    forEachPlace(via_, [&](double centreX, double centreY) {
        const double x = centreX - xLow;
        const double z = mapZCoord(centreY - yHigh);
        if (!std::isfinite(x) || !std::isfinite(z)) return;
        numbers.push_back(outlineNumber(x));
        numbers.push_back(outlineNumber(z));
    });
    return numbers;
}

} // namespace EDA

// The walk over a board that makes an IDX document of it.
#include "writers/IDXWriter.h"

#include "host/EntityModel/Units.h"
#include "writers/IDXDocumentDetail.h"
#include "writers/IDXTextDetail.h"

#include <QDomDocument>

namespace EDA {

namespace {

char const *const systemName = "Velkin Solver";
char const *const versionText = "2025.1-HF1";
char const *const lengthUnitId = "LENGTH_UNIT_ITEM";
char const *const featureType = "FeatureShapeElement";

// Converts lengths of a component's units to those of its board. Without both it changes nothing.
class LengthConverter {
public:
    LengthConverter(std::string const &from, std::string const &to) {
        EntityModel::Quantity const *const length = EntityModel::Units::findQuantity("Length");
        if (length == nullptr || from == to) return;
        from_ = EntityModel::Units::find(*length, from);
        to_ = EntityModel::Units::find(*length, to);
    }
    bool changes() const { return from_ != nullptr && to_ != nullptr && from_ != to_; }
    double operator()(double value) const {
        return changes() ? EntityModel::Units::convert(value, *from_, *to_) : value;
    }
    EDAOutline operator()(EDAOutline const &outline) const {
        if (!changes()) return outline;
        EDAOutline converted;
        for (auto point = outline.beginPoints(); point != outline.endPoints(); ++point) {
            double const x = (*this)(point->x), y = (*this)(point->y);
            if (point->centered)
                converted.addPoint(0, x, y, (*this)(point->centreX), (*this)(point->centreY),
                                   point->clockwise);
            else
                converted.addPoint(0, x, y, point->angle);
        }
        return converted;
    }

private:
    EntityModel::Unit const *from_ = nullptr;
    EntityModel::Unit const *to_ = nullptr;
};

// The ids of objects: a word and the place in the board, since names repeat and hold blanks.
template <typename Iterator, typename Object>
QString numberedId(char const *word, Iterator const &first, Object const &object) {
    return QLatin1String(word) + QString::number(&object - &*first + 1);
}

QString purposeOf(EDAKeepout const &keepout) {
    if (keepout.isRoutingKeepout()) return QStringLiteral("Route");
    if (keepout.isComponentKeepout()) return QStringLiteral("ComponentPlacement");
    if (keepout.isViaKeepout()) return QStringLiteral("Via");
    return idxText(keepout.getType());
}

QString sideOf(EDAKeepout const &keepout) {
    if (keepout.isOnBoardTop()) return QStringLiteral("TOP");
    return keepout.isOnBoardBottom() ? QStringLiteral("BOTTOM") : QStringLiteral("ALL");
}

} // namespace

IDXWriter::IDXWriter() = default;
IDXWriter::IDXWriter(IDXWriter const &other) : systemScope_(other.systemScope_) {}
IDXWriter &IDXWriter::operator=(IDXWriter const &other) {
    systemScope_ = other.systemScope_;
    return *this;
}
IDXWriter::~IDXWriter() = default;

bool IDXWriter::writeFile(std::string const &filename, EDABoard const &board) {
    if (filename.empty()) return false;
    document_ = std::make_unique<QDomDocument>();
    document_->insertBefore(document_->createProcessingInstruction(
                                QStringLiteral("xml"), QStringLiteral("version=\"1.0\" encoding=\"utf-8\"")),
                            document_->firstChild());
    QDomElement root = document_->createElement(QLatin1String(idxRootTag));
    document_->appendChild(root);
    addElement(root, "foundation:ProcessInstruction")
        .setAttribute(QStringLiteral("xsi:type"),
                      QStringLiteral("computational:EDMDProcessInstructionSendInformation"));
    addHeader(root);
    addBody(root, board);
    bool const isSaved = saveIdxDocument(*document_, filename);
    document_.reset();
    return isSaved;
}

void IDXWriter::addHeader(QDomElement &root) {
    QDomElement header = addElement(root, "foundation:Header");
    addProperty(header, QStringLiteral("IDX_VERSION"), QStringLiteral("2.0"));
    addProperty(header, QStringLiteral("IDX_FILE_TYPE"), QStringLiteral("BASELINE"));
    addText(header, "foundation:CreatorSystem",
            QLatin1String(systemName) + QLatin1Char(' ') + QLatin1String(versionText));
    addText(header, "foundation:GlobalUnitLength", QLatin1String(lengthUnitId));
}

void IDXWriter::addBody(QDomElement &root, EDABoard const &board) {
    QDomElement body = addElement(root, "foundation:Body");
    addSystemAndUnits(body, board);
    addBoard(body, board);
    for (auto component = board.beginComponents(); component != board.endComponents(); ++component)
        addComponent(body, *component, board);
    for (auto placement = board.beginPlacements(); placement != board.endPlacements(); ++placement)
        addComponentPlacement(body, *placement, board);
    for (auto keepout = board.beginKeepouts(); keepout != board.endKeepouts(); ++keepout)
        addKeepOut(body, *keepout, board);
    for (auto via = board.beginVias(); via != board.endVias(); ++via)
        addVia(body, *via, board);
}

void IDXWriter::addSystemAndUnits(QDomElement &body, EDABoard const &board) {
    QDomElement system = addIdentified(body, "foundation:System", systemScope_);
    addText(system, "foundation:GlobalName", QLatin1String(systemName));
    QDomElement unit = addIdentified(body, "foundation:UnitLength", QLatin1String(lengthUnitId));
    addText(unit, "property:Fundamental", idxText(board.getUnits()));
    QDomElement summary =
        addIdentified(body, "foundation:ExternalSource", QStringLiteral("DESIGN_SUMMARY_EXTERNAL_SOURCE"));
    addText(summary, "foundation:Name", QStringLiteral("IDX_DESIGN_SUMMARY"));
    addProperty(summary, QStringLiteral("IDX_DESIGN_FILE"), idxText(board.getName()));
    addProperty(summary, QStringLiteral("IDX_DESIGN_REV"), QStringLiteral("1"));
}

// The definitions go into the body itself, one after the other: readers do not look for them in each other.
void IDXWriter::addBoard(QDomElement &body, EDABoard const &board) {
    QString const base = QStringLiteral("BOARD_OUTLINE");
    double const thickness = board.getThickness();
    EDAOutline const &outline = board.getOutline();
    QString const edge = addShapeElement(body, base, QLatin1String(featureType), outline, thickness, false);
    QDomElement stratum = addIdentified(body, "foundation:Stratum", base + QLatin1String("_STRATUM"));
    addText(stratum, "pdm:ShapeElement", edge);
    int number = 0;
    for (auto hole = outline.beginInternalOutlines(); hole != outline.endInternalOutlines(); ++hole) {
        QString const name = base + QLatin1String("_HOLE_") + QString::number(++number);
        addText(stratum, "pdm:ShapeElement",
                addShapeElement(body, name, QLatin1String(featureType), *hole, thickness, hole->isHole()));
    }
    addText(stratum, "pdm:StratumType", QStringLiteral("DesignLayerStratum"));
    addText(stratum, "pdm:StratumSurfaceDesignation", QStringLiteral("PrimarySurface"));
    addItem(body, base + QLatin1String("_ITEM"), base + QLatin1String("_STRATUM"));
    QDomElement assembly = addAssemblyItem(body, base + QLatin1String("_ASSEMBLY"));
    QDomElement instance = addAssemblyInstance(assembly, base + QLatin1String("_INSTANCE"),
                                               QStringLiteral("BoardOutline"), base + QLatin1String("_ITEM"));
    addProperty(instance, QStringLiteral("THICKNESS"), idxNumber(thickness));
    addProperty(instance, QStringLiteral("TYPE"), QStringLiteral("BOARDOUTLINE"));
    addBasline(assembly);
}

void IDXWriter::addComponent(QDomElement &body, EDAComponent const &component, EDABoard const &board) {
    QString const base = numberedId("PART_", board.beginComponents(), component);
    LengthConverter const converted(component.getUnits(), board.getUnits());
    double const height = converted(component.getHeight());
    QString const element =
        addShapeElement(body, base + QLatin1String("_OUTLINE"), QStringLiteral("PartFeature"),
                        converted(component.getOutline()), height, false);
    QString const shapeId = base + QLatin1String("_COMPONENT");
    QDomElement shape = addIdentified(body, "foundation:AssemblyComponent", shapeId);
    addText(shape, "pdm:ShapeElement", element);
    addText(shape, "pdm:AssemblyComponentType", QStringLiteral("Physical"));
    QDomElement item = addItem(body, base + QLatin1String("_ITEM"), shapeId);
    addProperty(item, QStringLiteral("HEIGHT"), idxNumber(height));
    addProperty(item, QStringLiteral("PARTNUM"), idxText(component.getPartNumber()));
    QDomElement package = addElement(item, "pdm:PackageName");
    addScopedName(package, "foundation:ObjectName", idxText(component.getName()));
}

void IDXWriter::addComponentPlacement(QDomElement &body, EDAComponentPlacement const &placement,
                                      EDABoard const &board) {
    EDAComponent const *const component = board.findComponent(placement);
    if (component == nullptr) return;
    QString const base = numberedId("PLACEMENT_", board.beginPlacements(), placement);
    QDomElement assembly = addAssemblyItem(body, base + QLatin1String("_ASSEMBLY"));
    QDomElement instance = addAssemblyInstance(
        assembly, base + QLatin1String("_INSTANCE"), idxText(placement.getReferenceDesignator()),
        numberedId("PART_", board.beginComponents(), *component) + QLatin1String("_ITEM"));
    // The angle of an orientation is the same whatever is asked for: this is intended.
    addTransform(instance, placement.getXLocation(), placement.getYLocation(), -placement.getAngle(false),
                 !placement.isOnBoardTop());
    addBasline(assembly);
}

// Points of keepouts stand where they are: readers do not move them.
void IDXWriter::addKeepOut(QDomElement &body, EDAKeepout const &keepout, EDABoard const &board) {
    QString const base = numberedId("KEEPOUT_", board.beginKeepouts(), keepout);
    QString const shapeId = base + QLatin1String("_KEEPOUT");
    QString const element =
        addShapeElement(body, base + QLatin1String("_OUTLINE"), QStringLiteral("NonFeatureShapeElement"),
                        keepout.getOutline(), keepout.getHeight(), false);
    QDomElement shape = addIdentified(body, "foundation:KeepOut", shapeId);
    addText(shape, "pdm:ShapeElement", element);
    addText(shape, "pdm:Purpose", purposeOf(keepout));
    addItem(body, base + QLatin1String("_ITEM"), shapeId);
    QDomElement assembly = addAssemblyItem(body, base + QLatin1String("_ASSEMBLY"));
    QDomElement instance = addAssemblyInstance(assembly, base + QLatin1String("_INSTANCE"),
                                               idxText(keepout.getName()), base + QLatin1String("_ITEM"));
    addProperty(instance, QStringLiteral("SIDE"), sideOf(keepout));
    addBasline(assembly);
}

// The place stands in the transform alone, as readers add the two up.
void IDXWriter::addVia(QDomElement &body, EDAVia const &via, EDABoard const &board) {
    QString const base = numberedId("VIA_", board.beginVias(), via);
    QString const name = base + QLatin1String("_OUTLINE"), shapeId = base + QLatin1String("_VIA");
    EDAOutline outline; // in the default steps, as of other outlines
    outline.resetOutline(via.getOutline(), false);
    QString const curve = outline.empty() ? addCircle(body, name, 0.0, 0.0, via.getDiameter())
                                          : addPolyLine(body, name, outline, via.getOutline().isClosed());
    QString const element =
        addShapeElementOf(body, name, QStringLiteral("ViaTerminal"), curve, board.getThickness(), false);
    QDomElement shape = addIdentified(body, "foundation:InterStratumFeature", shapeId);
    addText(shape, "pdm:ShapeElement", element);
    addText(shape, "pdm:InterStratumFeatureType",
            via.isPlated() ? QStringLiteral("PlatedCutout") : QStringLiteral("Cutout"));
    addItem(body, base + QLatin1String("_ITEM"), shapeId);
    QDomElement assembly = addAssemblyItem(body, base + QLatin1String("_ASSEMBLY"));
    QDomElement instance = addAssemblyInstance(assembly, base + QLatin1String("_INSTANCE"),
                                               idxText(via.getName()), base + QLatin1String("_ITEM"));
    addProperty(instance, QStringLiteral("ICMIDX_ATTRIBUTE_HOLE_ASSOCIATED_PART"),
                idxText(via.getAssociatedPart()));
    addTransform(instance, via.getXCentre(), via.getYCentre(), -via.getAngle(), false);
    addBasline(assembly);
}

} // namespace EDA

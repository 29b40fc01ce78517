// What the dictionaries of an IPC-2581 document hold, and the shapes that are made with it.
#include "host/QvDbWrap/IpcDictionaries.h"

#include "host/QvDbWrap/WrapperLog.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace QvDbWrap {

namespace {

const Areas nothing;

void collectReferences(const Drawing &drawing, std::vector<ShapeReference> &references) {
    references.insert(references.end(), drawing.references.begin(), drawing.references.end());
    for (const Drawing &part : drawing.parts)
        collectReferences(part, references);
}

void moveTo(Areas &areas, Areas &more) {
    if (areas.empty())
        areas.swap(more);
    else
        std::move(more.begin(), more.end(), std::back_inserter(areas));
}

bool isOutline(const Drawing &drawing) { return drawing.element == "Outline"; }

} // namespace

void IpcDictionaries::addShape(const std::string &id, bool isUser, Drawing drawing) {
    const auto added = (isUser ? user_ : standard_).try_emplace(id);
    if (!added.second) return log_.warn("shape " + id + " is in its dictionary twice: the first counts");
    Entry &entry = added.first->second;
    entry.id = id;
    collectReferences(drawing, entry.references);
    entry.drawing = std::move(drawing);
}

void IpcDictionaries::addLine(const std::string &id, const LineStyle &line) { lines_.emplace(id, line); }

void IpcDictionaries::addFill(const std::string &id, FillStyle fill) { fills_.emplace(id, fill); }

IpcDictionaries::Entry *IpcDictionaries::lookUp(const ShapeReference &reference) {
    for (Entries *entries :
         {reference.isUser ? &user_ : &standard_, reference.isUser ? &standard_ : &user_}) {
        const auto found = entries->find(reference.id);
        if (found != entries->end()) return &found->second;
    }
    return nullptr;
}

const Areas &IpcDictionaries::find(const ShapeReference &reference) {
    Entry *entry = lookUp(reference);
    if (!entry) {
        log_.warn("shape " + reference.id + " is in no dictionary");
        return nothing;
    }
    makeAll(*entry);
    return entry->areas;
}

Areas IpcDictionaries::make(const Drawing &drawing) {
    std::vector<ShapeReference> references;
    collectReferences(drawing, references);
    for (const ShapeReference &reference : references)
        if (Entry *entry = lookUp(reference)) makeAll(*entry);
    shapeGrowth_ = 0;
    Areas areas;
    addParts(drawing, areas);
    return areas;
}

// An entry's lower ones are made before it, without recursion: a document may chain as many as it likes.
void IpcDictionaries::makeAll(Entry &entry) {
    std::vector<Entry *> opened;
    if (entry.state == State::New) opened.push_back(&entry);
    while (!opened.empty()) {
        Entry &top = *opened.back();
        top.state = State::Opened;
        if (Entry *next = nextToMake(top)) {
            opened.push_back(next);
        } else {
            makeEntry(top);
            opened.pop_back();
        }
    }
}

IpcDictionaries::Entry *IpcDictionaries::nextToMake(Entry &entry) {
    while (entry.numLookedAt < entry.references.size()) {
        Entry *lower = lookUp(entry.references[entry.numLookedAt++]);
        if (lower && lower->state == State::New) return lower;
    }
    return nullptr;
}

void IpcDictionaries::makeEntry(Entry &entry) {
    making_ = &entry;
    addParts(entry.drawing, entry.areas);
    making_ = nullptr;
    entry.state = State::Made;
    entry.drawing = Drawing();
    entry.references.clear();
}

void IpcDictionaries::addParts(const Drawing &drawing, Areas &areas) {
    Areas own;
    addOwn(drawing, own);
    for (const ShapeReference &reference : drawing.references)
        addReference(reference, own);
    for (const Drawing &part : drawing.parts)
        addParts(part, own);
    if (drawing.isPlaced) {
        own = drawing.placement.apply(own);
        if (!isInRange(own)) return log_.warn("a shape with a place that is out of range is left out");
    }
    moveTo(areas, own);
}

void IpcDictionaries::addReference(const ShapeReference &reference, Areas &areas) {
    const Entry *entry = lookUp(reference);
    if (!entry) return log_.warn("shape " + reference.id + " is in no dictionary");
    if (entry->state != State::Made)
        return log_.warn("shape " + reference.id + " uses itself: it is left out where it does");
    const int height = entry->height + 1;
    if (height > IpcGeometry::maxReferenceDepth)
        return log_.warn("shape " + reference.id + " uses others too deep: it is left out where it is used");
    if (making_) making_->height = std::max(making_->height, height);
    if (takeGrowth(entry->areas) &&
        takeCopies(numPoints(entry->areas), entry->areas.size(), IpcGeometry::Copy::OfElement) &&
        takePoints(entry->areas))
        areas.insert(areas.end(), entry->areas.begin(), entry->areas.end());
}

// A border is drawn around what is filled, too.
void IpcDictionaries::addOwn(const Drawing &drawing, Areas &areas) {
    if (!drawing.path.empty()) {
        if (!drawing.line.isGiven) return log_.warn(drawing.element + " without a width is not drawn");
        return append(strokePath(drawing.path, lineOf(drawing)), areas);
    }
    if (drawing.filled.empty()) return;
    const FillStyle fill = fillOf(drawing);
    if (fill == FillStyle::Void) return;
    if (fill == FillStyle::Solid) append(drawing.filled, areas);
    const LineStyle line = lineOf(drawing);
    if (!(line.width > 0)) return;
    for (const Area &area : drawing.filled) {
        append(strokeRing(area.outer, line), areas);
        for (const Ring &hole : area.holes)
            append(strokeRing(hole, line), areas);
    }
}

void IpcDictionaries::append(Areas made, Areas &areas) {
    if (takePoints(made)) moveTo(areas, made);
}

bool IpcDictionaries::takePoints(const Areas &areas) {
    const std::size_t count = numPoints(areas);
    const bool fits = count <= IpcGeometry::maxPoints - numMade_;
    if (fits)
        numMade_ += count;
    else
        log_.warn("more than " + std::to_string(IpcGeometry::maxPoints) +
                  " points in shapes: some are left out");
    return fits;
}

bool IpcDictionaries::takeCopies(std::size_t points, std::size_t areas, IpcGeometry::Copy copy) {
    constexpr std::size_t pointsPerArea = 12;
    constexpr std::size_t smallCopy = 40; // a round pad; large boards have a million of them
    const std::size_t cost = std::max(points, pointsPerArea * areas);
    if (copy == IpcGeometry::Copy::OfElement && cost <= smallCopy) return true;
    const bool fits = cost <= IpcGeometry::maxCopied - numCopied_;
    if (fits)
        numCopied_ += cost;
    else
        log_.warn("more than " + std::to_string(IpcGeometry::maxCopied) +
                  " points by references and at further places: some are left out");
    return fits;
}

// An area costs more than its points.
bool IpcDictionaries::takeGrowth(const Areas &areas) {
    constexpr std::size_t pointsPerArea = 8;
    const std::size_t cost = numPoints(areas) + pointsPerArea * areas.size();
    std::size_t &growth = making_ ? entryGrowth_ : shapeGrowth_;
    const bool fits = cost <= maxGrowth - growth;
    if (fits)
        growth += cost;
    else
        log_.warn("shapes that use others draw too many points: some are left out");
    return fits;
}

LineStyle IpcDictionaries::lineOf(const Drawing &drawing) {
    if (!drawing.line.isGiven || drawing.line.id.empty()) return drawing.line.style;
    const auto found = lines_.find(drawing.line.id);
    if (found != lines_.end()) return found->second;
    log_.warn("line style " + drawing.line.id + " is in no dictionary: what uses it is not drawn");
    return {};
}

FillStyle IpcDictionaries::fillOf(const Drawing &drawing) {
    const FillStyle unsaid = isOutline(drawing) ? FillStyle::Hollow : FillStyle::Solid;
    if (!drawing.fill.isGiven) return unsaid;
    if (drawing.fill.id.empty()) return drawing.fill.style;
    const auto found = fills_.find(drawing.fill.id);
    if (found != fills_.end()) return found->second;
    log_.warn("fill style " + drawing.fill.id + " is in no dictionary: what uses it is filled");
    return unsaid;
}

} // namespace QvDbWrap

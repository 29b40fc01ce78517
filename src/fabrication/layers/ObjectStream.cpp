// Objects on their way: what is set when they are drawn, and their recording.
#include "fabrication/layers/ObjectStream.h"

#include "fabrication/Limits.h"

#include <algorithm>

namespace EDA::Fabrication {

namespace {

std::shared_ptr<Aperture> makeUndefined() {
    auto aperture = std::make_shared<Aperture>();
    aperture->isUndefined = true;
    return aperture;
}

} // namespace

ObjectStream::ObjectStream(LayerSink &sink, FileApertures &apertures, LayerFacts &facts, Notes &notes)
    : sink_(sink), apertures_(apertures), facts_(facts), notes_(notes), aperture_(makeUndefined()), nets_(1) {
}

void ObjectStream::setAperture(std::shared_ptr<Aperture> aperture) {
    aperture_ = aperture ? std::move(aperture) : makeUndefined();
    shape_ = nullptr;
    isUseRecorded_ = false;
}

void ObjectStream::setTransform(ApertureTransform const &transform) {
    transform_ = transform;
    shape_ = nullptr;
    isUseRecorded_ = false;
}

void ObjectStream::setImage(Placement const &image) {
    image_ = image;
    isPlainImage_ = image.isPlain();
    shape_ = nullptr;
}

void ObjectStream::setNet(std::string_view net, std::string_view pin) {
    net_ = 0;
    if (net.empty() && pin.empty()) return;
    std::string key(net);
    key += '\0';
    key += pin;
    const auto added = netIds_.emplace(std::move(key), static_cast<std::uint32_t>(nets_.size()));
    if (added.second) nets_.emplace_back(net, pin);
    net_ = added.first->second;
}

PlacedShape const &ObjectStream::currentShape() {
    if (!shape_) shape_ = &apertures_.shapeOf(*aperture_, composed(image_.turn, transform_));
    return *shape_;
}

std::uint32_t ObjectStream::currentUse() {
    std::vector<ApertureUse> &uses = open_.back()->uses;
    if (!isUseRecorded_) uses.push_back({aperture_, transform_});
    isUseRecorded_ = true;
    return static_cast<std::uint32_t>(uses.size() - 1);
}

void ObjectStream::flash(Point const &at) {
    if (aperture_->block) {
        place(aperture_->block, at, transform_, isDark_, {});
    } else if (open_.empty()) {
        emitFlash(currentShape(), image_.at(at), isDark_, net_);
    } else if (admitsRecorded(1)) {
        record(Recording::Kind::Flash, currentUse());
        open_.back()->points.push_back(at);
    }
}

void ObjectStream::stroke(Point const &from, Segment const &segment) {
    if (open_.empty()) {
        if (isPlainImage_)
            emitStroke(currentShape(), from, segment, isDark_, net_);
        else
            emitStroke(currentShape(), image_, from, segment, isDark_, net_);
        return;
    }
    if (!admitsRecorded(2)) return;
    record(Recording::Kind::Stroke, currentUse()).motion = segment.motion;
    std::vector<Point> &points = open_.back()->points;
    points.push_back(from);
    points.push_back(segment.end);
    if (segment.motion != Motion::Line) points.push_back(segment.centre);
}

void ObjectStream::region(Path const &contour) {
    if (!open_.empty())
        recordPath(contour);
    else if (isPlainImage_)
        emitRegion(contour, isDark_, net_);
    else
        emitRegion(image_, contour, isDark_, net_);
}

void ObjectStream::place(std::shared_ptr<Recording const> const &recording, Point const &at,
                         ApertureTransform const &transform, bool isDark, Repeats const &repeats) {
    if (recording->objects.empty()) return;
    PlacedRecording placed{recording, transform, repeats};
    if (open_.empty())
        drawCopies(placed, at, {image_, !isDark, net_});
    else
        recordPlaced(std::move(placed), at, isDark);
}

void ObjectStream::openRecording() {
    open_.push_back(std::make_shared<Recording>());
    isUseRecorded_ = false;
}

std::shared_ptr<Recording const> ObjectStream::closeRecording() {
    std::shared_ptr<Recording const> closed = std::move(open_.back());
    open_.pop_back();
    isUseRecorded_ = false;
    return closed;
}

bool ObjectStream::admitsRecorded(std::size_t numPoints) {
    numRecordedPoints_ += numPoints;
    if (++numRecorded_ > Limits::objects) stop("objects beyond the limit of one layer");
    if (numRecordedPoints_ > Limits::points) stop("points beyond the limit of one layer");
    return !isStopped_;
}

Recording::Object &ObjectStream::record(Recording::Kind kind, std::uint32_t index) {
    open_.back()->objects.push_back({kind, isDark_, Motion::Line, net_, index});
    return open_.back()->objects.back();
}

void ObjectStream::recordPath(Path const &contour) {
    if (!admitsRecorded(contour.segments.size())) return;
    std::deque<Path> &regions = open_.back()->regions;
    regions.push_back(contour);
    record(Recording::Kind::Region, static_cast<std::uint32_t>(regions.size() - 1));
}

void ObjectStream::recordPlaced(PlacedRecording placed, Point const &at, bool isDark) {
    if (!admitsRecorded(1)) return;
    Recording &into = *open_.back();
    if (placed.recording->depth >= Limits::blockDepth) {
        notes_.add(NoteKind::LeftOut, "blocks beyond the limit of depth", line_);
        return;
    }
    into.depth = std::max(into.depth, placed.recording->depth + 1);
    into.recordings.push_back(std::move(placed));
    into.points.push_back(at);
    record(Recording::Kind::Recording, static_cast<std::uint32_t>(into.recordings.size() - 1)).isDark =
        isDark;
}

void ObjectStream::stop(std::string_view what) {
    if (!isStopped_) notes_.add(NoteKind::LeftOut, what, line_);
    isStopped_ = true;
}

void ObjectStream::finish() {
    if (!bound_.isEmpty)
        facts_.bound = Geometry::Bound2D(bound_.xLow, bound_.yLow, bound_.xHigh, bound_.yHigh);
    notes_.add(NoteKind::LeftOut, "objects beyond all measure", lineBeyond_, numBeyond_);
}

} // namespace EDA::Fabrication

// The way of objects from the statements of a layer file to their sink.
#pragma once

#include "fabrication/LayerGraphics.h"
#include "fabrication/layers/FileApertures.h"
#include "fabrication/layers/LayerFile.h"
#include "fabrication/layers/Placement.h"
#include "fabrication/layers/Recording.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace EDA::Fabrication {

// Draws objects with what is set at the time, or records them while a recording is open; resolves recordings
// and the transforms of the image; counts what it hands on, and stops at the limits.
class ObjectStream {
public:
    ObjectStream(LayerSink &sink, FileApertures &apertures, LayerFacts &facts, Notes &notes);

    void setAperture(std::shared_ptr<Aperture> aperture);
    void setTransform(ApertureTransform const &transform);
    void setDark(bool isDark) { isDark_ = isDark; }
    void setNet(std::string_view net, std::string_view pin);
    void setImage(Placement const &image);

    // Asked for a stop while many copies are drawn; may be null.
    void setProgress(Tools::ToolProgress *progress) { progress_ = progress; }

    // Draws a dark box and what follows with dark and clear exchanged.
    void startNegative(Geometry::Bound2D const &box);

    // What is set; before anything is, an undefined one.
    Aperture const &aperture() const { return *aperture_; }

    void flash(Point const &at);
    // The aperture must be no block.
    void stroke(Point const &from, Segment const &segment);
    void region(Path const &contour);

    // Recordings may be opened within each other.
    void openRecording();
    std::shared_ptr<Recording const> closeRecording();
    std::size_t numOpen() const { return open_.size(); }
    void place(std::shared_ptr<Recording const> const &recording, Point const &at,
               ApertureTransform const &transform, bool isDark, Repeats const &repeats);

    // True once nothing more is taken. `line` is told by the notes.
    bool isStopped() const { return isStopped_; }
    void setLine(std::size_t line) { line_ = line; }
    // Sets the bound of the facts and adds what was counted to the notes.
    void finish();

private:
    // What a recording is drawn with.
    struct Context {
        Placement placement;
        bool isInverted = false;
        std::uint32_t net = 0; // of objects without one
    };

    PlacedShape const &currentShape();
    std::uint32_t currentUse();
    Recording::Object &record(Recording::Kind kind, std::uint32_t index);
    void recordPath(Path const &contour);
    void recordPlaced(PlacedRecording placed, Point const &at, bool isDark);
    bool admitsRecorded(std::size_t numPoints);

    void draw(Recording const &recording, Context const &context);
    void drawCopies(PlacedRecording const &placed, Point const &at, Context const &context);
    void findShapes(Recording const &recording, ApertureTransform const &transform);

    void emitFlash(PlacedShape const &shape, Point const &at, bool isDark, std::uint32_t net);
    void emitStroke(PlacedShape const &shape, Point const &from, Segment const &segment, bool isDark,
                    std::uint32_t net);
    void emitStroke(PlacedShape const &shape, Placement const &placement, Point const &from,
                    Segment const &segment, bool isDark, std::uint32_t net);
    void emitRegion(Path const &contour, bool isDark, std::uint32_t net);
    void emitRegion(Placement const &placement, Path const &contour, bool isDark, std::uint32_t net);
    bool admits(Point const &point);
    bool admits(Point const &from, Segment const &segment);
    bool prepare(std::uint32_t net, std::size_t numPoints);
    void uniteBound(Box const &path, Box const &reach);
    void stop(std::string_view what);

    LayerSink &sink_;
    FileApertures &apertures_;
    LayerFacts &facts_;
    Notes &notes_;
    Tools::ToolProgress *progress_ = nullptr;

    std::shared_ptr<Aperture> aperture_;
    ApertureTransform transform_;
    PlacedShape const *shape_ = nullptr; // of the aperture and transforms that are set; null: to be found
    bool isDark_ = true;
    bool isNegative_ = false;
    Placement image_;
    bool isPlainImage_ = true;

    std::vector<std::shared_ptr<Recording>> open_;
    bool isUseRecorded_ = false; // whether the last use of the open recording is what is set

    std::vector<std::pair<std::string, std::string>> nets_; // the first: none
    std::unordered_map<std::string, std::uint32_t> netIds_;
    std::uint32_t net_ = 0;
    std::uint32_t sinkNet_ = 0;

    Box bound_;
    Path placed_; // scratch
    std::size_t line_ = 0;
    std::size_t numEmitted_ = 0;
    std::size_t numRecorded_ = 0;
    std::size_t numReplayed_ = 0;
    std::size_t numPoints_ = 0;
    std::size_t numRecordedPoints_ = 0;
    std::size_t numBeyond_ = 0; // objects that lie beyond all measure
    std::size_t lineBeyond_ = 0;
    bool isStopped_ = false;
};

} // namespace EDA::Fabrication

// Any bytes as a layer file of a fabrication set: read alone, and written again.
#include "fabrication/layers/ClearResolver.h"
#include "fabrication/layers/LayerFile.h"
#include "fabrication/layers/LayerWriter.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace {

using namespace EDA::Fabrication;

void require(bool promise) {
    if (!promise) std::abort();
}

void requireFinite(Point const &point) { require(std::isfinite(point.x) && std::isfinite(point.y)); }

// Full after a few objects: no input takes long by what it lawfully asks for.
class Counter : public LayerSink {
public:
    void flash(Shape const &shape, Point const &at, bool) override {
        require(!shape.isNothing() && shape.id != 0);
        requireFinite(at);
        ++count_;
    }
    void stroke(Shape const &, Point const &from, Segment const &segment, bool) override {
        requireFinite(from);
        requireFinite(segment.end);
        requireFinite(segment.centre);
        ++count_;
    }
    void region(Path const &contour, bool) override {
        require(!contour.segments.empty());
        for (Segment const &segment : contour.segments)
            requireFinite(segment.end);
        ++count_;
    }
    bool isFull() const override { return count_ >= 200; }
    std::size_t count() const { return count_; }

private:
    std::size_t count_ = 0;
};

class NoText : public TextSink {
public:
    void write(std::string_view) override {}
};

// Takes as many as the counter.
class BoundedWriter : public LayerWriter {
public:
    BoundedWriter(TextSink &sink, Counter const &counter)
        : LayerWriter(sink, "Copper,L1,Top", nullptr), left_(counter.count()) {}

    void flash(Shape const &shape, Point const &at, bool dark) override {
        --left_;
        LayerWriter::flash(shape, at, dark);
    }
    void stroke(Shape const &shape, Point const &from, Segment const &segment, bool dark) override {
        --left_;
        LayerWriter::stroke(shape, from, segment, dark);
    }
    void region(Path const &contour, bool dark) override {
        --left_;
        LayerWriter::region(contour, dark);
    }
    bool isFull() const override { return left_ == 0; }

private:
    std::size_t left_;
};

// Takes what is dark in the end.
class DarkWriter : public LayerWriter {
public:
    using LayerWriter::LayerWriter;

    void flash(Shape const &shape, Point const &at, bool dark) override {
        require(dark);
        LayerWriter::flash(shape, at, dark);
    }
    void stroke(Shape const &shape, Point const &from, Segment const &segment, bool dark) override {
        require(dark);
        LayerWriter::stroke(shape, from, segment, dark);
    }
    void region(Path const &contour, bool dark) override {
        require(dark);
        LayerWriter::region(contour, dark);
    }
};

// Takes few objects, as each may cost as much as all before it.
class BoundedResolver : public ClearResolver {
public:
    using ClearResolver::ClearResolver;

    bool isFull() const override { return numAsked_++ > 50; }

private:
    mutable std::size_t numAsked_ = 0;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    Counter counter;
    Notes notes;
    const LayerFacts facts = readLayerFile(bytes, {}, counter, notes);
    require(facts.numObjects() == counter.count());
    require(notes.list().size() <= Notes::maxNotes + 2);

    NoText text;
    Notes again;
    BoundedWriter writer(text, counter);
    require(readLayerFile(bytes, {}, writer, again).numObjects() == counter.count());
    writer.finish();

    DarkWriter darkWriter(text, "", nullptr);
    BoundedResolver resolver(darkWriter, again);
    readLayerFile(bytes, {}, resolver, again);
    resolver.finish();
    darkWriter.finish();
    return 0;
}

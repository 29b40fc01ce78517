// Canonical layer files written for one test.
#pragma once

#include "fabrication/apertures/ApertureMaker.h"
#include "fabrication/layers/LayerWriter.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace WriterTests {

using namespace EDA::Fabrication;

class StringSink : public TextSink {
public:
    void write(std::string_view piece) override { text += piece; }
    std::string text;
};

inline std::string written(std::function<void(LayerWriter &)> const &draw, NetPoints *nets = nullptr,
                           std::string const &function = "") {
    StringSink sink;
    LayerWriter writer(sink, function, nets);
    draw(writer);
    writer.finish();
    return sink.text;
}

// The lines between head and end.
inline std::string bodyOf(std::function<void(LayerWriter &)> const &draw, NetPoints *nets = nullptr) {
    std::string const text = written(draw, nets);
    std::size_t const begin = text.find("%LPD*%\n") + 7;
    return text.substr(begin, text.rfind("M02*") - begin);
}

inline std::size_t countOf(std::string const &text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

inline Shape withId(Shape shape, std::size_t id) {
    shape.id = id;
    return shape;
}

inline Shape standard(std::string_view letter, std::vector<double> const &modifiers, std::size_t id = 1) {
    Notes notes;
    return withId(ApertureMaker(1.0, notes).standard(letter, modifiers, 1), id);
}

inline Shape macro(std::vector<std::string> const &statements, std::string const &name = "M",
                   std::size_t id = 1) {
    Notes notes;
    return withId(ApertureMaker(1.0, notes).fromMacro({name, statements}, {}, 1), id);
}

inline Shape functional(Shape shape, std::string const &function) {
    shape.function = function;
    return shape;
}

inline Segment line(double x, double y) { return {{x, y}, {}, Motion::Line}; }
inline Segment arc(Motion motion, Point end, Point centre) { return {end, centre, motion}; }

} // namespace WriterTests

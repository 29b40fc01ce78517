// A picture as SVG text.
#include "Picture.h"

#include "Printable.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>

namespace EDATool {

namespace {

// Three decimals are a thousandth of a pixel. Coordinates far outside of any screen are held, so that no
// number of a hostile design grows a text of hundreds of digits.
std::string number(double value) {
    const double held = std::isfinite(value) ? std::clamp(value, -1e7, 1e7) : 0.0;
    char text[32];
    char *end = std::to_chars(text, text + sizeof text, held, std::chars_format::fixed, 3).ptr;
    while (end[-1] == '0')
        --end;
    if (end[-1] == '.') --end;
    const std::string result(text, static_cast<std::size_t>(end - text));
    return result == "-0" ? "0" : result;
}

std::string pointText(const Point &point) { return number(point.x) + " " + number(point.y); }

std::string arcText(double radius, bool isLarge, bool isPositive, const Point &to) {
    const std::string r = number(radius);
    return "A" + r + " " + r + " 0 " + (isLarge ? "1 " : "0 ") + (isPositive ? "1 " : "0 ") + pointText(to);
}

// An arc that ends where it starts is nothing to SVG: a full circle is written as two halves.
std::string arcSteps(const PathStep &arc) {
    const double radius = std::hypot(arc.to.x - arc.centre.x, arc.to.y - arc.centre.y);
    const bool isPositive = arc.sweep > 0;
    if (std::fabs(arc.sweep) < 359.999)
        return arcText(radius, std::fabs(arc.sweep) > 180, isPositive, arc.to);
    const Point opposite{2 * arc.centre.x - arc.to.x, 2 * arc.centre.y - arc.to.y};
    return arcText(radius, false, isPositive, opposite) + arcText(radius, false, isPositive, arc.to);
}

std::string pathText(const Path &path) {
    std::string text;
    for (const PathStep &step : path) {
        switch (step.kind) {
        case PathStep::Kind::Move:
            text += "M" + pointText(step.to);
            break;
        case PathStep::Kind::Line:
            text += "L" + pointText(step.to);
            break;
        case PathStep::Kind::Arc:
            text += arcSteps(step);
            break;
        case PathStep::Kind::Close:
            text += "Z";
            break;
        }
    }
    return text;
}

std::string colourText(const Colour &colour) {
    constexpr char digits[] = "0123456789abcdef";
    std::string text = "#";
    for (const std::uint8_t part : {colour.red, colour.green, colour.blue}) {
        text += digits[part >> 4];
        text += digits[part & 15];
    }
    return text;
}

std::string paint(const std::string &name, const Colour &colour) {
    if (colour.alpha == 0) return " " + name + "=\"none\"";
    std::string text = " " + name + "=\"" + colourText(colour) + "\"";
    if (colour.alpha < 255) text += " " + name + "-opacity=\"" + number(colour.alpha / 255.0) + "\"";
    return text;
}

std::string strokeAttributes(const Style &style) {
    if (style.stroke.alpha == 0) return std::string();
    std::string text = paint("stroke", style.stroke) + " stroke-width=\"" + number(style.strokeWidth) + "\"";
    if (style.dashed) {
        text += " stroke-dasharray=\"" + number(4 * style.strokeWidth) + " " + number(3 * style.strokeWidth) +
                "\"";
    }
    return text;
}

// The hatch patterns of a picture, by what tells them apart.
class Patterns {
public:
    std::string idOf(const Style &style) {
        const std::string body = patternBody(style);
        const auto added = ids_.emplace(body, "hatch" + std::to_string(ids_.size() + 1));
        if (added.second) {
            definitions_ +=
                "<pattern id=\"" + added.first->second + "\" patternUnits=\"userSpaceOnUse\" " + body;
        }
        return added.first->second;
    }
    const std::string &definitions() const { return definitions_; }

private:
    static std::string patternBody(const Style &style) {
        const std::string step = number(style.hatchSpacing);
        return "width=\"" + step + "\" height=\"" + step + "\" patternTransform=\"rotate(" +
               number(style.hatchAngle) + ")\"><path d=\"M0 " + number(style.hatchSpacing / 2) + "H" + step +
               "\"" + paint("stroke", style.hatch) + " stroke-width=\"" + number(style.hatchSpacing / 6) +
               "\"/></pattern>\n";
    }

    std::map<std::string, std::string> ids_;
    std::string definitions_;
};

std::string pathElements(const PictureItem &item, Patterns &patterns) {
    const std::string data = "<path d=\"" + pathText(item.path) + "\"";
    std::string elements;
    if (item.style.hatch.alpha != 0) {
        if (item.style.fill.alpha != 0)
            elements += data + " fill-rule=\"evenodd\"" + paint("fill", item.style.fill) + "/>\n";
        return elements + data + " fill-rule=\"evenodd\" fill=\"url(#" + patterns.idOf(item.style) + ")\"" +
               strokeAttributes(item.style) + "/>\n";
    }
    return data + " fill-rule=\"evenodd\"" + paint("fill", item.style.fill) + strokeAttributes(item.style) +
           "/>\n";
}

std::string textElement(const PictureItem &item) {
    constexpr const char *anchors[] = {"start", "middle", "end"};
    const TextStyle &style = item.textStyle;
    std::string element = "<text x=\"" + number(item.at.x) + "\" y=\"" + number(item.at.y) +
                          "\" font-size=\"" + number(style.size) + "\"" + paint("fill", style.colour);
    if (style.anchor != TextStyle::Anchor::Start) {
        element += std::string(" text-anchor=\"") + anchors[static_cast<int>(style.anchor)] + "\"";
    }
    if (style.bold) element += " font-weight=\"bold\"";
    if (style.upward) element += " transform=\"rotate(-90 " + pointText(item.at) + ")\"";
    return element + ">" + xmlEscaped(item.text) + "</text>\n";
}

std::string clipDefinition(const Picture &picture) {
    if (picture.numClipped() == 0) return std::string();
    const Box &box = picture.clip();
    return "<clipPath id=\"drawing\"><rect x=\"" + number(box.low.x) + "\" y=\"" + number(box.low.y) +
           "\" width=\"" + number(box.width()) + "\" height=\"" + number(box.height()) + "\"/></clipPath>\n";
}

} // namespace

double estimatedTextWidth(const std::string &text, double size, bool bold) {
    const double perCharacter =
        bold ? 0.68 : 0.61; // of the font that both writers ask for, capitals and digits
    return perCharacter * size * static_cast<double>(countCharacters(text));
}

std::string toSvg(const Picture &picture) {
    Patterns patterns;
    std::string body;
    if (picture.numClipped() > 0) body += "<g clip-path=\"url(#drawing)\">\n";
    std::size_t numDone = 0;
    for (const PictureItem &item : picture.items()) {
        body += item.text.empty() ? pathElements(item, patterns) : textElement(item);
        if (++numDone == picture.numClipped()) body += "</g>\n";
    }
    const std::string definitions =
        "<defs>\n" + clipDefinition(picture) + patterns.definitions() + "</defs>\n";
    const std::string width = std::to_string(picture.width());
    const std::string height = std::to_string(picture.height());
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
           width + "\" height=\"" + height + "\" viewBox=\"0 0 " + width + " " + height + "\"" +
           (picture.isSharp ? " shape-rendering=\"crispEdges\"" : "") +
           " font-family=\"DejaVu Sans, Verdana, Helvetica, Arial, sans-serif\">\n<title>" +
           xmlEscaped(picture.title) + "</title>\n" + definitions + "<rect width=\"" + width +
           "\" height=\"" + height + "\"" + paint("fill", picture.background()) + "/>\n" + body + "</svg>\n";
}

} // namespace EDATool

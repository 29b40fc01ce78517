// A picture as PNG, drawn by the toolkit.
#include "Picture.h"

#include "Console.h"
#include "Printable.h"

#include <QtCore/QBuffer>
#include <QtGui/QFont>
#include <QtGui/QGuiApplication>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>

namespace EDATool {

namespace {

const double radiansToDegrees = 45.0 / std::atan(1.0);

// Fonts need a running toolkit; the "offscreen" platform is the one without a display.
class Toolkit {
public:
    Toolkit() : application_(count_, arguments_) {}

private:
    char name_[4] = "eda";
    char option_[10] = "-platform";
    char platform_[10] = "offscreen";
    char *arguments_[4] = {name_, option_, platform_, nullptr};
    int count_ = 3;
    QGuiApplication application_;
};

// Advice on the desktop session is of no use to who asked for a picture.
void dropAdvice(QtMsgType type, const QMessageLogContext &, const QString &text) {
    if (type == QtCriticalMsg || type == QtFatalMsg) printWarning(printable(text.toStdString()));
}

QColor toQt(const Colour &colour) { return QColor(colour.red, colour.green, colour.blue, colour.alpha); }

// The painter overflows on coordinates far outside of the image.
QPointF toQt(const Point &point) {
    const auto held = [](double value) {
        return std::isfinite(value) ? std::fmin(std::fmax(value, -1e6), 1e6) : 0.0;
    };
    return QPointF(held(point.x), held(point.y));
}

void addArc(QPainterPath &path, const PathStep &arc) {
    const QPointF centre = toQt(arc.centre);
    const QPointF from = path.currentPosition();
    const double radius = std::hypot(from.x() - centre.x(), from.y() - centre.y());
    const double start = std::atan2(from.y() - centre.y(), from.x() - centre.x()) * radiansToDegrees;
    // The toolkit counts angles against the clock on the screen, paths with it.
    path.arcTo(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius, -start, -arc.sweep);
    path.lineTo(toQt(arc.to));
}

QPainterPath toQt(const Path &steps) {
    QPainterPath path;
    path.setFillRule(Qt::OddEvenFill);
    for (const PathStep &step : steps) {
        switch (step.kind) {
        case PathStep::Kind::Move:
            path.moveTo(toQt(step.to));
            break;
        case PathStep::Kind::Line:
            path.lineTo(toQt(step.to));
            break;
        case PathStep::Kind::Arc:
            addArc(path, step);
            break;
        case PathStep::Kind::Close:
            path.closeSubpath();
            break;
        }
    }
    return path;
}

// The toolkit smooths an edge through a list of the pixels that it passes, one list for each row. An outline
// that goes over the picture again and again fills these lists, and each pixel then costs a walk along its
// list.
class Smoothing {
public:
    explicit Smoothing(QPainter &painter) : painter_(painter) {
        isWanted_ = painter.testRenderHint(QPainter::Antialiasing);
    }

    // Draws the path with plain edges where smoothing all would take minutes. Few outlines of real boards
    // need a hundredth of what there is.
    void chooseFor(const QPainterPath &path) {
        if (!isWanted_) return;
        const double work = workOf(path);
        const bool isSmooth = work < freeWork || work <= left_;
        if (work >= freeWork && isSmooth) left_ -= work;
        painter_.setRenderHint(QPainter::Antialiasing, isSmooth);
    }
    void end() { painter_.setRenderHint(QPainter::Antialiasing, isWanted_); }

private:
    static constexpr double freeWork = 1e4; // of a path whose list walks are nothing
    static constexpr double mostWork = 1e7; // of a picture: a second or two

    // The square of the pixels in a row, for all rows.
    static double workOf(const QPainterPath &path) {
        double length = 0.0;
        for (int i = 1; i < path.elementCount(); ++i) {
            const QPainterPath::Element before = path.elementAt(i - 1), here = path.elementAt(i);
            if (!here.isMoveTo()) length += std::hypot(here.x - before.x, here.y - before.y);
        }
        return length * length / std::max(path.controlPointRect().height(), 1.0);
    }

    QPainter &painter_;
    bool isWanted_;
    double left_ = mostWork;
};

void drawHatch(QPainter &painter, const QPainterPath &path, const Style &style) {
    const QRectF area = path.boundingRect().intersected(QRectF(painter.window()));
    if (area.isEmpty() || style.hatchSpacing < 1.0) return;
    painter.save();
    painter.setClipPath(path, painter.hasClipping() ? Qt::IntersectClip : Qt::ReplaceClip);
    painter.setPen(QPen(toQt(style.hatch), style.hatchSpacing / 6));
    painter.translate(area.center());
    painter.rotate(style.hatchAngle);
    const double reach = std::hypot(area.width(), area.height()) / 2 + style.hatchSpacing;
    for (double offset = -reach; offset <= reach; offset += style.hatchSpacing) {
        painter.drawLine(QPointF(-reach, offset), QPointF(reach, offset));
    }
    painter.restore();
}

void drawPath(QPainter &painter, const PictureItem &item, Smoothing &smoothing) {
    const QPainterPath path = toQt(item.path);
    smoothing.chooseFor(path);
    if (item.style.fill.alpha != 0) painter.fillPath(path, toQt(item.style.fill));
    if (item.style.hatch.alpha != 0) drawHatch(painter, path, item.style);
    if (item.style.stroke.alpha == 0) return smoothing.end();
    QPen pen(toQt(item.style.stroke), item.style.strokeWidth, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
    if (item.style.dashed) pen.setDashPattern({4.0, 3.0});
    painter.strokePath(path, pen);
    smoothing.end();
}

// Glyphs are laid out at a size that is large enough for whole pixels and scaled down to the size asked for.
constexpr int layoutSize = 64;

// The shapes of texts. Those of the plain letters that designators are made of are kept: to get one from the
// font takes longer than to draw it.
class Lettering {
public:
    explicit Lettering(bool isBold) : font_(QStringLiteral("DejaVu Sans")) {
        font_.setStyleHint(QFont::SansSerif);
        font_.setHintingPreference(QFont::PreferNoHinting);
        font_.setPixelSize(layoutSize);
        font_.setBold(isBold);
    }

    // Starts at 0 on the base line; `width` becomes how far it advances.
    QPainterPath shapeOf(const QString &text, double &width) {
        QPainterPath shape;
        if (!std::all_of(text.begin(), text.end(), isPlain)) {
            shape.addText(0, 0, font_, text);
            width = QFontMetricsF(font_).horizontalAdvance(text);
            return shape;
        }
        width = 0.0;
        for (const QChar letter : text) {
            const Glyph &glyph = glyphOf(letter);
            shape.addPath(glyph.shape.translated(width, 0));
            width += glyph.advance;
        }
        return shape;
    }

private:
    struct Glyph {
        QPainterPath shape;
        double advance;
    };

    static bool isPlain(QChar letter) { return letter >= QLatin1Char(' ') && letter <= QLatin1Char('~'); }

    const Glyph &glyphOf(QChar letter) {
        std::optional<Glyph> &glyph = glyphs_[static_cast<std::size_t>(letter.unicode())];
        if (!glyph) {
            glyph = Glyph{{}, QFontMetricsF(font_).horizontalAdvance(letter)};
            glyph->shape.addText(0, 0, font_, QString(letter));
        }
        return *glyph;
    }

    QFont font_;
    std::array<std::optional<Glyph>, 128> glyphs_;
};

void drawText(QPainter &painter, const PictureItem &item, Lettering &lettering) {
    double width = 0.0;
    const QPainterPath glyphs = lettering.shapeOf(QString::fromStdString(item.text), width);
    const double shift = item.textStyle.anchor == TextStyle::Anchor::Start    ? 0.0
                         : item.textStyle.anchor == TextStyle::Anchor::Middle ? -width / 2
                                                                              : -width;
    painter.save();
    painter.translate(toQt(item.at));
    if (item.textStyle.upward) painter.rotate(-90);
    painter.scale(item.textStyle.size / layoutSize, item.textStyle.size / layoutSize);
    painter.translate(shift, 0);
    painter.fillPath(glyphs, toQt(item.textStyle.colour));
    painter.restore();
}

} // namespace

std::string toPng(const Picture &picture, std::string &error) {
    qInstallMessageHandler(dropAdvice);
    const Toolkit toolkit;
    QImage image(picture.width(), picture.height(), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) {
        error = "not enough memory for a picture of " + std::to_string(picture.width()) + " by " +
                std::to_string(picture.height()) + " pixels";
        return std::string();
    }
    image.fill(toQt(picture.background()));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing, !picture.isSharp);
    const Box &clip = picture.clip();
    if (picture.numClipped() > 0) {
        painter.setClipRect(QRectF(clip.low.x, clip.low.y, clip.width(), clip.height()));
    }
    Smoothing smoothing(painter);
    Lettering plain(false), bold(true);
    std::size_t numDone = 0;
    for (const PictureItem &item : picture.items()) {
        if (numDone++ == picture.numClipped()) painter.setClipping(false);
        if (item.text.empty())
            drawPath(painter, item, smoothing);
        else
            drawText(painter, item, item.textStyle.bold ? bold : plain);
    }
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!std::move(image).convertToFormat(QImage::Format_RGB32).save(&buffer, "PNG")) {
        error = "the picture cannot be encoded as PNG";
        return std::string();
    }
    return bytes.toStdString();
}

} // namespace EDATool

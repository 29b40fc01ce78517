// How much of a layer's picture is conductor, and where.
#include "host/ServerModelGUI/PCBLayerImageCalculator.h"

#include "host/EntityModel/Entity.h"
#include "host/EntityModel/Types.h"

#include <QtGui/QImage>

#include <algorithm>
#include <cstdint>

namespace ServerConstructor {

using namespace EntityModel;

namespace {

bool isYes(const CompositeAttribute *settings, const TypeRef &name) {
    return getTypeValue(settings, AttributePath(name), TypeRef()) == Yes_t;
}

int readColour(const CompositeAttribute *settings) {
    int colour = 0;
    for (const TypeRef &name : {MaterialRed_t, MaterialGreen_t, MaterialBlue_t}) {
        const double component = getDoubleValue(settings, AttributePath(name), "", 0.0);
        if (component < 0.0 || component > 255.0) return -1;
        colour = colour * 256 + static_cast<int>(component);
    }
    return colour;
}

// The first pixel of a cell, of `cells` that share `pixels`.
int cellStart(int cell, int cells, int pixels) {
    return static_cast<int>(std::int64_t{cell} * pixels / cells);
}

} // namespace

struct PCBLayerImageCalculator::Counts {
    std::int64_t conductor = 0;
    std::int64_t all = 0;
};

void PCBLayerImageCalculator::initialise(Entity *entity, CompositeAttribute *composite) {
    const CompositeAttribute *const settings = composite ? composite : entity;
    colour_ = readColour(settings);
    isConductor_ = isYes(settings, MaterialIsConductor_t);
    backgroundIsIgnored_ = isYes(settings, BackgroundIsIgnored_t);
}

void PCBLayerImageCalculator::count(const QImage &strip, std::vector<Counts> &cells) const {
    const int columns = static_cast<int>(cells.size());
    for (int y = 0; y < strip.height(); ++y) {
        const auto *pixel = reinterpret_cast<const QRgb *>(strip.constScanLine(y));
        for (int column = 0; column < columns; ++column) {
            Counts &cell = cells[static_cast<std::size_t>(column)];
            const int width =
                cellStart(column + 1, columns, strip.width()) - cellStart(column, columns, strip.width());
            for (const QRgb *const end = pixel + width; pixel != end; ++pixel) {
                const bool isBackground = qAlpha(*pixel) == 0;
                const bool hasColour = static_cast<int>(*pixel & RGB_MASK) == colour_;
                if (!isBackground || !backgroundIsIgnored_) ++cell.all;
                if (!isBackground && hasColour == isConductor_) ++cell.conductor;
            }
        }
    }
}

double PCBLayerImageCalculator::calculatePercentageConductor(const QImage &image,
                                                             std::vector<int> &materialMap) const {
    materialMap.clear();
    if (image.isNull()) return 0.0;
    const int columns = std::min(image.width(), maxMapSide);
    const int rows = std::min(image.height(), maxMapSide);
    materialMap.reserve(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows));
    Counts total;
    // Strip by strip, so that a picture of another pixel format is never held twice.
    for (int row = 0; row < rows; ++row) {
        const int top = cellStart(row, rows, image.height());
        const int height = cellStart(row + 1, rows, image.height()) - top;
        std::vector<Counts> cells(static_cast<std::size_t>(columns));
        count(image.copy(0, top, image.width(), height).convertToFormat(QImage::Format_ARGB32), cells);
        for (const Counts &cell : cells) {
            total.conductor += cell.conductor;
            total.all += cell.all;
            materialMap.push_back(cell.all > 0 && 2 * cell.conductor >= cell.all ? 1 : 0);
        }
    }
    if (total.all == 0) return 0.0;
    return 100.0 * static_cast<double>(total.conductor) / static_cast<double>(total.all);
}

} // namespace ServerConstructor

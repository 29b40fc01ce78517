// Writes IPC-2581 documents.
#include "IpcGenerator.h"

#include "BenchRandom.h"

#include <cstdio>

namespace EDABench {

namespace {

const char *const conductors[] = {"TOP", "GROUND", "POWER", "BOTTOM"};
const char *const dielectrics[] = {"PREPREG_1", "CORE", "PREPREG_2"};

class Generator {
public:
    Generator(int units, unsigned seed) : random_(seed), units_(units) {}

    std::string generate() {
        addFrame();
        addPackages();
        for (int unit = 0; unit < units_; ++unit)
            addNet(unit);
        for (const char *layer : conductors)
            addLayer(layer);
        addHoles();
        text_ += "      </Step>\n    </CadData>\n  </Ecad>\n</IPC-2581>\n";
        return std::move(text_);
    }

private:
    template <typename... Values> void line(const char *format, Values... values) {
        char buffer[1000];
        text_.append(buffer,
                     static_cast<std::size_t>(std::snprintf(buffer, sizeof buffer, format, values...)));
    }
    double x() { return random_.uniform(0, 300); }
    double y() { return random_.uniform(0, 200); }

    void addFrame() {
        text_ +=
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<IPC-2581 revision=\"C\" xmlns=\"http://webstds.ipc.org/2581\">\n  <Content roleRef=\"Owner\">\n"
            "    <StepRef name=\"board\"/>\n    <DictionaryLineDesc units=\"MILLIMETER\">\n";
        for (int i = 0; i < 6; ++i)
            line("      <EntryLineDesc id=\"ROUND_%d\">\n        <LineDesc lineEnd=\"ROUND\" "
                 "lineWidth=\"%.3f\"/>\n"
                 "        </EntryLineDesc>\n",
                 i, 0.1 + 0.05 * i);
        text_ += "    </DictionaryLineDesc>\n    <DictionaryStandard units=\"MILLIMETER\">\n";
        for (int i = 0; i < 20; ++i)
            line("      <EntryStandard id=\"PAD_%d\">\n        <%s/>\n        </EntryStandard>\n", i,
                 i % 3 == 0 ? "Circle diameter=\"0.6\"" : "RectCenter width=\"0.8\" height=\"0.4\"");
        text_ += "    </DictionaryStandard>\n  </Content>\n  <Ecad name=\"Design\">\n"
                 "    <CadHeader units=\"MILLIMETER\"/>\n    <CadData>\n";
        for (const char *layer : conductors)
            line("      <Layer name=\"%s\" layerFunction=\"CONDUCTOR\" side=\"INTERNAL\" "
                 "polarity=\"POSITIVE\"/>\n",
                 layer);
        for (const char *layer : dielectrics)
            line("      <Layer name=\"%s\" layerFunction=\"DIELPREG\" side=\"INTERNAL\" "
                 "polarity=\"POSITIVE\"/>\n",
                 layer);
        text_ += "      <Layer name=\"DRILL\" layerFunction=\"DRILL\" side=\"ALL\" polarity=\"POSITIVE\">\n"
                 "        <Span fromLayer=\"TOP\" toLayer=\"BOTTOM\"/>\n        </Layer>\n"
                 "      <Stackup name=\"PRIMARY\">\n        <StackupGroup name=\"GROUP\">\n";
        for (int i = 0; i < 7; ++i)
            line("          <StackupLayer layerOrGroupRef=\"%s\" thickness=\"%s\" sequence=\"%d\"/>\n",
                 i % 2 == 0 ? conductors[i / 2] : dielectrics[i / 2], i % 2 == 0 ? "0.035" : "0.4", i + 1);
        text_ += "        </StackupGroup>\n      </Stackup>\n      <Step name=\"board\">\n        <Profile>\n"
                 "          <Polygon>\n            <PolyBegin x=\"0\" y=\"0\"/>\n"
                 "            <PolyStepSegment x=\"300\" y=\"0\"/>\n            <PolyStepSegment x=\"300\" "
                 "y=\"200\"/>\n"
                 "            <PolyStepSegment x=\"0\" y=\"200\"/>\n            </Polygon>\n          "
                 "</Profile>\n";
    }

    void addPackages() {
        for (int i = 0; i < 20; ++i)
            line("        <Package name=\"PACKAGE_%d\" type=\"OTHER\" height=\"1.0\">\n          <Outline>\n"
                 "            <Polygon>\n              <PolyBegin x=\"-1\" y=\"-1\"/>\n"
                 "              <PolyStepSegment x=\"1\" y=\"-1\"/>\n              <PolyStepSegment x=\"1\" "
                 "y=\"1\"/>\n"
                 "              <PolyStepSegment x=\"-1\" y=\"1\"/>\n              </Polygon>\n"
                 "            </Outline>\n          </Package>\n",
                 i);
        for (int i = 0; i < units_ / 20; ++i)
            line("        <Component refDes=\"U%d\" packageRef=\"PACKAGE_%d\" layerRef=\"TOP\" "
                 "part=\"PART_%d\" "
                 "mountType=\"SMT\" height=\"1.0\">\n          <Xform rotation=\"%d.000\"/>\n"
                 "          <Location x=\"%.6f\" y=\"%.6f\"/>\n          </Component>\n",
                 i, i % 20, i % 20, 90 * random_.below(4), x(), y());
    }

    void addNet(int unit) {
        line("        <LogicalNet name=\"NET_%d\" netClass=\"UNUSED\">\n          <PinRef pin=\"1\" "
             "componentRef=\"U%d\"/>\n          <PinRef pin=\"2\" componentRef=\"U%d\"/>\n          "
             "</LogicalNet>\n",
             unit, unit / 20, unit / 20 + 1);
    }

    void addLayer(const char *layer) {
        line("        <LayerFeature layerRef=\"%s\">\n", layer);
        for (int unit = 0; unit < units_; ++unit) {
            for (int i = 0; i < 2; ++i)
                addPad(unit);
            for (int i = 0; i < 4; ++i)
                addTrack(unit);
            if (unit % 4 == 0) addArea(unit);
        }
        text_ += "          </LayerFeature>\n";
    }

    void addPad(int unit) {
        line("          <Set net=\"NET_%d\" testPoint=\"false\" plate=\"true\">\n"
             "            <NonstandardAttribute name=\"PADSTACK_USAGE\" value=\"Through\" type=\"STRING\"/>\n"
             "            <Pad padstackDefRef=\"STACK_%d\">\n              <Xform rotation=\"%d.000\"/>\n"
             "              <Location x=\"%.6f\" y=\"%.6f\"/>\n              <StandardPrimitiveRef "
             "id=\"PAD_%d\"/>\n"
             "              <PinRef pin=\"1\" componentRef=\"U%d\"/>\n              </Pad>\n            "
             "</Set>\n",
             unit, unit % 9, 90 * random_.below(4), x(), y(), random_.below(20), unit / 20);
    }

    void addTrack(int unit) {
        double px = x(), py = y();
        line("          <Set net=\"NET_%d\">\n            <Features>\n              <Location x=\"0.0\" "
             "y=\"0.0\"/>\n"
             "              <Polyline>\n                <PolyBegin x=\"%.6f\" y=\"%.6f\"/>\n",
             unit, px, py);
        for (int i = 1 + random_.below(4); i > 0; --i) {
            px += random_.uniform(-5, 5);
            py += random_.uniform(-5, 5);
            line("                <PolyStepSegment x=\"%.6f\" y=\"%.6f\"/>\n", px, py);
        }
        line("                <LineDescRef id=\"ROUND_%d\"/>\n                </Polyline>\n              "
             "</Features>\n"
             "            </Set>\n",
             random_.below(6));
    }

    void addArea(int unit) {
        const double px = x(), py = y();
        line("          <Set net=\"NET_%d\">\n            <Features>\n              <Location x=\"0.0\" "
             "y=\"0.0\"/>\n"
             "              <Contour>\n                <Polygon>\n                  <PolyBegin x=\"%.6f\" "
             "y=\"%.6f\"/>\n",
             unit, px, py);
        for (int i = 1; i < 20; ++i)
            line("                  <PolyStepSegment x=\"%.6f\" y=\"%.6f\"/>\n", px + i,
                 py + random_.unit() + i % 2);
        line("                  <PolyStepSegment x=\"%.6f\" y=\"%.6f\"/>\n                  </Polygon>\n", px,
             py + 8);
        line("                <Cutout>\n                  <PolyBegin x=\"%.6f\" y=\"%.6f\"/>\n", px + 3,
             py + 3);
        for (int i = 0; i < 2; ++i)
            line("                  <PolyStepCurve x=\"%.6f\" y=\"%.6f\" centerX=\"%.6f\" centerY=\"%.6f\" "
                 "clockwise=\"true\"/>\n",
                 i == 0 ? px + 2 : px + 3, py + 3, px + 2.5, py + 3);
        text_ += "                  </Cutout>\n                </Contour>\n              </Features>\n"
                 "            </Set>\n";
    }

    void addHoles() {
        text_ += "        <LayerFeature layerRef=\"DRILL\">\n";
        for (int i = 0; i < units_; ++i)
            line("          <Set net=\"NET_%d\" geometry=\"STACK_%d\">\n            <Hole name=\"H%d\" "
                 "diameter=\"0.%d\" "
                 "platingStatus=\"VIA\" plusTol=\"0.0\" minusTol=\"0.0\" x=\"%.6f\" y=\"%.6f\"/>\n           "
                 " </Set>\n",
                 i, i % 9, i, 3 + random_.below(5), x(), y());
        text_ += "          </LayerFeature>\n";
    }

    Random random_;
    int units_;
    std::string text_;
};

} // namespace

std::string generateIpc(std::size_t bytes, unsigned seed) {
    constexpr int sample = 100;
    const std::size_t frame = Generator(0, seed).generate().size();
    const std::size_t unit = (Generator(sample, seed).generate().size() - frame) / sample;
    return Generator(static_cast<int>(bytes / unit * 21 / 20) + 1, seed).generate();
}

} // namespace EDABench

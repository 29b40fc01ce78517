// Designs of the layout suite's families for tests of the tool.
#pragma once

#include "host/QvDbWrap/LayoutSupport.h"
#include "support/RunTool.h"
#include "support/ZipFile.h"

#include <string>
#include <vector>

namespace TestSupport {

// A document with a board of that name for each name, each 0.1 m wide more than the one before.
inline std::string ipcDocument(const std::vector<std::string> &steps) {
    std::string text = "<?xml version=\"1.0\"?>\n<!--\n.HEADER\nG04*\n-->\n<IPC-2581 revision=\"C\" "
                       "xmlns=\"http://webstds.ipc.org/2581\"><Content><StepRef name=\"" +
                       steps.front() +
                       "\"/></Content><Ecad><CadHeader units=\"MILLIMETER\"/><CadData>"
                       "<Layer name=\"TOP\" layerFunction=\"SIGNAL\" side=\"TOP\"/>"
                       "<Layer name=\"CORE\" layerFunction=\"DIELCORE\" side=\"INTERNAL\"/>"
                       "<Layer name=\"BOTTOM\" layerFunction=\"SIGNAL\" side=\"BOTTOM\"/>"
                       "<Stackup name=\"S\"><StackupGroup name=\"G\">"
                       "<StackupLayer layerOrGroupRef=\"TOP\" thickness=\"0.035\" sequence=\"1\"/>"
                       "<StackupLayer layerOrGroupRef=\"CORE\" thickness=\"1.53\" sequence=\"2\"/>"
                       "<StackupLayer layerOrGroupRef=\"BOTTOM\" thickness=\"0.035\" sequence=\"3\"/>"
                       "</StackupGroup></Stackup>";
    int width = 0;
    for (const std::string &step : steps) {
        width += 100;
        text += "<Step name=\"" + step +
                "\"><Profile><Polygon><PolyBegin x=\"0\" y=\"0\"/><PolyStepSegment x=\"" +
                std::to_string(width) + "\" y=\"0\"/><PolyStepSegment x=\"" + std::to_string(width) +
                "\" y=\"50\"/><PolyStepSegment x=\"0\" y=\"50\"/><PolyStepSegment x=\"0\" y=\"0\"/></Polygon>"
                "</Profile></Step>";
    }
    return text + "</CadData></Ecad></IPC-2581>\n";
}

class SuiteBench : public testing::Test {
protected:
    ToolResult info(const std::string &name, const std::string &bytes,
                    std::vector<std::string> more = {}) const {
        more.insert(more.begin(), {"info", folder.write(name, bytes)});
        return runTool(more);
    }
    void writeArchive(const std::string &name, const std::vector<std::string> &entries) const {
        folder.write(name, zipOf(entries));
    }

    TempFolder folder;
};

} // namespace TestSupport

// Reading an IDX design: one document.
#include "Failure.h"
#include "Formats.h"
#include "Printable.h"
#include "readers/IDXReader.h"
#include "WarningList.h"

#include <algorithm>
#include <map>

namespace EDATool {

namespace {

constexpr std::size_t nameLimit = 100;
constexpr std::size_t lineLimit = 300;
constexpr std::size_t typesLimit = 20;

std::string counted(std::size_t number, const std::string &one, const std::string &many) {
    return std::to_string(number) + ' ' + (number == 1 ? one : many);
}

bool startsWith(const std::string &text, const std::string &start) {
    return text.compare(0, start.size(), start) == 0;
}

// The reader's messages, gathered by kind.
class MessageCount {
public:
    explicit MessageCount(const std::string &text) {
        for (std::size_t begin = 0; begin < text.size();) {
            const std::size_t end = std::min(text.find('\n', begin), text.size());
            addLine(text.substr(begin, end - begin));
            begin = end + 1;
        }
    }

    void moveTo(std::vector<std::string> &lines) {
        WarningList kinds;
        for (const auto &[kind, number] : kinds_)
            kinds.add(instancesLine(kind, number));
        kinds.moveTo(lines, "kinds of instances that are left out");
        if (curves_ > 0) {
            lines.push_back(counted(curves_, "curve is", "curves are") +
                            " missing in the document, or made of themselves: " +
                            inQuotes(shortened(firstCurve_, nameLimit)) + (curves_ > 1 ? " and others" : "") +
                            "; outlines lack them");
        }
        others_.moveTo(lines, "messages");
    }

private:
    void addLine(const std::string &line) {
        static const std::string object = "Unhandled Object Type ";
        static const std::string curve = "Failed to find curve element ";
        if (startsWith(line, object)) {
            ++kinds_[line.substr(object.size())];
        } else if (startsWith(line, curve)) {
            if (curves_++ == 0) firstCurve_ = line.substr(curve.size());
        } else if (!line.empty()) {
            others_.add(shortened(line, lineLimit));
        }
    }

    static std::string instancesLine(const std::string &kind, std::size_t number) {
        const std::string leftOut = number == 1 ? " is left out" : " are left out";
        if (kind.empty())
            return counted(number, "instance", "instances") + leftOut +
                   ": the item or its shape was not found";
        const bool isHole = kind == "Cutout" || kind == "PlatedCutout";
        return counted(number, "instance", "instances") + " of the kind " +
               inQuotes(shortened(kind, nameLimit)) + leftOut + (isHole ? ": not round" : "");
    }

    std::map<std::string, std::size_t> kinds_;
    std::size_t curves_ = 0;
    std::string firstCurve_;
    WarningList others_;
};

void addPassedOver(const EDA::IDXReader &reader, std::vector<std::string> &lines) {
    const EDA::IDXReader::PassedOver &passed = reader.passedOver();
    if (passed.keepIns > 0)
        lines.push_back(
            counted(passed.keepIns, "region to keep in is left out", "regions to keep in are left out"));
    if (passed.genericLayers > 0)
        lines.push_back(counted(passed.genericLayers, "layer of the purpose GenericLayer is left out",
                                "layers of the purpose GenericLayer are left out"));
    if (passed.bareStrata > 0)
        lines.push_back(counted(passed.bareStrata, "stratum without a technology is left out",
                                "strata without a technology are left out"));
}

// The most frequent first: "3 VIA, 1 COMPONENT and 2 more".
std::string typesLine(const EDA::IDXReader &reader) {
    std::vector<std::pair<std::size_t, std::string>> types;
    for (const auto &[type, number] : reader.geometryTypes())
        types.emplace_back(number, type);
    std::stable_sort(types.begin(), types.end(),
                     [](const auto &a, const auto &b) { return a.first > b.first; });
    types.resize(std::min(types.size(), typesLimit));
    std::string line;
    std::size_t others = reader.numTypedItems();
    for (const auto &[number, type] : types) {
        line += (line.empty() ? "" : ", ") + std::to_string(number) + ' ' + shortened(type, nameLimit);
        others -= number;
    }
    return others > 0 ? line + " and " + std::to_string(others) + " more" : line;
}

// Before all that is missing for this reason.
void addNewerStyle(const EDA::IDXReader &reader, std::vector<std::string> &lines) {
    if (reader.numTypedItems() == 0) return;
    lines.push_back(counted(reader.numTypedItems(), "item tells its kind", "items tell their kind") +
                    " by a geometryType: the document is of a newer style, in which eda finds few shapes; "
                    "one of baseline kind in the older style can be read whole. Items: " +
                    typesLine(reader));
}

bool isEmpty(const EDA::EDABoard &board) {
    return board.getOutline().empty() && board.numComponents() == 0 && board.numKeepouts() == 0 &&
           board.numVias(0) == 0 && board.numLayers() == 0;
}

std::vector<std::string> trouble(const EDA::IDXReader &reader) {
    std::vector<std::string> lines;
    if (isEmpty(reader.getBoard())) lines.push_back("no part of a board was found in the document");
    addNewerStyle(reader, lines);
    MessageCount(reader.getError()).moveTo(lines);
    addPassedOver(reader, lines);
    return lines;
}

} // namespace

bool looksLikeIdx(const std::string &file, std::string_view) { return EDA::IDXReader::isDocument(file); }

std::unique_ptr<EDA::EDAReader> makeIdxReader() { return std::make_unique<EDA::IDXReader>(); }

void readIdxDesign(const std::vector<std::string> &files, const DesignSettings &, Design &design) {
    const std::string &file = files.front();
    if (files.size() > 1) {
        throw UsageFailure(inQuotes(file) + " and " + inQuotes(files[1]) +
                           " are two IDX documents, which are a design each");
    }
    if (!EDA::IDXReader::isDocument(file))
        throw DesignFailure(inQuotes(file) + ": is no IDX document: its first element is no EDMDDataSet");
    auto reader = std::make_unique<EDA::IDXReader>();
    if (!reader->readFile(file)) {
        throw DesignFailure(
            inQuotes(file) + ": is no well-formed XML, or has more than " +
            std::to_string(EDA::IDXReaderLimits().xml.depth) +
            " levels of elements, or elements, names, entities, attributes or prefixes beyond "
            "every use");
    }
    for (const std::string &line : trouble(*reader))
        design.warnings.push_back(inQuotes(file) + ": " + line);
    design.files.push_back(file);
    design.hasBoard = true;
    design.reader = std::move(reader);
}

} // namespace EDATool

// What is in a design or a model, for people and for programs.
#pragma once

#include "Design.h"
#include "Entities.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <string>
#include <vector>

namespace EDATool {

// One JSON object of a report. The names of its members are an interface for programs.
class JsonReport {
public:
    JsonReport();

    // A name is null for what stands in an array.
    void addText(const char *name, const std::string &value);
    void addTexts(const char *name, const std::vector<std::string> &values);
    void addNumber(const char *name, double value);
    void addCount(const char *name, std::size_t value);
    void addFlag(const char *name, bool value);
    void beginObject(const char *name);
    void endObject() { writer_.EndObject(); }
    void beginArray(const char *name);
    void endArray() { writer_.EndArray(); }

    void addDesign(const Design &design); // all members of "info --json" but "messages"
    void addEntities(const EntityCounts &counts);
    void addCounts(const char *name, const EntityCounts &counts);

    // Ends the object; gives its text with a line feed.
    std::string finish();

private:
    void addName(const char *name);
    void addBound(double xLow, double yLow, double xHigh, double yHigh);
    void addOutline(const EDA::EDAOutline &outline);
    void addLayer(const EDA::EDABoardLayer &layer);
    void addSources(const Design &design);
    void addFabrication(const FabricationReport &report);

    rapidjson::StringBuffer buffer_;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> writer_;
};

struct TableRow {
    std::string label; // printable; blanks at its start indent the row
    std::string value;
};

// A line each, with the values in one column.
std::string tableText(const std::vector<TableRow> &rows);

// A table with a line for each kind of thing in the design.
std::string designTable(const Design &design);

// A table with a line for each type of entity.
std::string entityTable(const EntityCounts &counts);

// The warnings of a design in one text, a line each.
std::string joinedLines(const std::vector<std::string> &lines);

} // namespace EDATool

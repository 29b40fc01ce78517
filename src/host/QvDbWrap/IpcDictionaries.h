// What the dictionaries of an IPC-2581 document hold, and the shapes that are made with it.
#pragma once

#include "host/QvDbWrap/IpcDrawing.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace QvDbWrap {

class WrapperLog;

// Shapes of entries are made when they are first asked for, once each, so that shapes which use each other
// many times over cost no more than what they draw. What can't be drawn is told to the log.
class IpcDictionaries {
public:
    // Points that references may add to the entries of all dictionaries, and to any one shape besides them:
    // many times those of a real design, and little enough for memory where a document is made to grow.
    static constexpr std::size_t maxGrowth = 2000000;

    explicit IpcDictionaries(WrapperLog &log) : log_(log) {}

    // The first entry of an id counts.
    void addShape(const std::string &id, bool isUser, Drawing drawing);
    void addLine(const std::string &id, const LineStyle &line);
    void addFill(const std::string &id, FillStyle fill);

    // The areas of an entry; empty when there is none.
    const Areas &find(const ShapeReference &reference);

    // The areas of a drawing.
    Areas make(const Drawing &drawing);

    // Whether so much may be drawn once more of what is there already.
    bool takeCopies(std::size_t points, std::size_t areas, IpcGeometry::Copy copy);

private:
    enum class State { New, Opened, Made };

    struct Entry {
        std::string id;
        Drawing drawing;
        std::vector<ShapeReference> references; // of all its parts
        Areas areas;
        std::size_t numLookedAt = 0; // of the references
        int height = 0;              // references from here to the lowest shape
        State state = State::New;
    };
    using Entries = std::unordered_map<std::string, Entry>;

    Entry *lookUp(const ShapeReference &reference);
    Entry *nextToMake(Entry &entry);
    void makeEntry(Entry &entry);
    void makeAll(Entry &entry);
    void addParts(const Drawing &drawing, Areas &areas);
    void addReference(const ShapeReference &reference, Areas &areas);
    void addOwn(const Drawing &drawing, Areas &areas);
    void append(Areas made, Areas &areas);
    bool takePoints(const Areas &areas);
    bool takeGrowth(const Areas &areas);
    LineStyle lineOf(const Drawing &drawing);
    FillStyle fillOf(const Drawing &drawing);

    WrapperLog &log_;
    Entries standard_;
    Entries user_;
    std::unordered_map<std::string, LineStyle> lines_;
    std::unordered_map<std::string, FillStyle> fills_;
    Entry *making_ = nullptr;
    std::size_t numMade_ = 0; // points
    std::size_t numCopied_ = 0;
    std::size_t entryGrowth_ = 0;
    std::size_t shapeGrowth_ = 0; // of the shape that is made now
};

} // namespace QvDbWrap

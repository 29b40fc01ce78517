// What a document says, before it is put together into a layout.
#pragma once

#include "host/QvDbWrap/IpcGeometry.h"
#include "host/QvDbWrap/IpcSubtract.h"

#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

namespace QvDbWrap {

// What one reading shares.
struct IpcContext {
    IpcXml &xml;
    IpcGeometry &geometry;
    WrapperLog &log;
    std::size_t points = 0; // drawn so far
    bool isFull = false;    // more than may be were asked for
    IpcCutBudget cutting = {};

    // Tells that the open element is not read, unless it is one without meaning to a layout.
    void passOver();

    // Whether so many more points may be drawn; tells it once where not.
    bool takePoints(std::size_t count);
    // The same of what is drawn once more: in a stack's pad, at a further place.
    bool takeCopies(std::size_t count, std::size_t numAreas, IpcGeometry::Copy copy);

    // What a text that is copied into a record costs beside it, in points.
    static std::size_t costOf(const std::string &text) { return text.size() < 16 ? 0 : text.size() / 4; }
};

// Texts that occur many times, by numbers. 0 is the empty text.
class IpcNames {
public:
    std::uint32_t add(const std::string &name);
    const std::string &get(std::uint32_t number) const { return names_[number]; }

private:
    std::vector<std::string> names_ = {std::string()};
    std::unordered_map<std::string, std::uint32_t> numbers_;
};

// Something drawn on a layer. What is negative takes away from all that was drawn there before.
struct IpcDrawn {
    Area area;
    std::uint32_t net = 0;
    std::uint32_t order = 0;
    bool isNegative = false;
};

// A pad whose shape is that of a stack which comes later in the document.
struct IpcPendingPad {
    std::string padstack;
    IpcPlacement placement;
    std::uint32_t net = 0;
    std::uint32_t order = 0;
    bool isNegative = false;
};

struct IpcCopper {
    static constexpr std::size_t maxObjects = 10000000;

    std::vector<IpcDrawn> drawn;
    std::vector<IpcPendingPad> pending;
};

enum class IpcPlating { Unknown, Plated, NonPlated };

// Without a slot it is round. Texts that many holes share are numbers of names.
struct IpcHole {
    std::string name;
    _mFPOINT at;
    double diameter = 0;
    Ring slot; // about `at`
    IpcPlating plating = IpcPlating::Unknown;
    double platingThickness = 0; // 0 where the document gives none
    std::uint32_t fillMaterial = 0;
    std::uint32_t fromLayer = 0; // 0: the outer conductors
    std::uint32_t toLayer = 0;
    std::uint32_t padstack = 0; // has what the hole does not say itself
};

struct IpcPadstack {
    bool hasHole = false;
    _mFPOINT holeAt;
    double diameter = 0;
    IpcPlating plating = IpcPlating::Unknown;
    std::map<std::string, Areas> pads; // by layer
};

// Where a pad with a stack stands.
struct IpcStackPlace {
    std::uint32_t padstack = 0; // number of its name
    IpcPlacement placement;
};

struct IpcFill {
    _mFPOINT at;
    std::uint32_t material = 0; // number of its name
};

struct IpcPackage {
    std::string name;
    double height = 0;
    Ring outline;
};

struct IpcComponent {
    std::string designator;
    std::string package;
    std::string part;
    std::string layer;
    double height = 0; // 0: that of the package
    IpcPlacement placement;
};

struct IpcRepeat {
    std::string step;
    _mFPOINT at;
    double dx = 0;
    double dy = 0;
    int nx = 1;
    int ny = 1;
    double rotation = 0;
    bool isMirrored = false;
};

struct IpcStep {
    std::string name;
    std::string type;
    std::string stackup;
    bool hasProfile = false;
    std::vector<Ring> profile;                         // the edge, then the cut-outs
    std::unordered_map<std::string, IpcCopper> copper; // by layer
    std::uint32_t numDrawn = 0;
    std::unordered_map<std::string, IpcPadstack> padstacks;
    std::vector<IpcStackPlace> stackPlaces;
    std::vector<IpcHole> holes;
    std::vector<IpcFill> fills;
    std::vector<IpcPackage> packages;
    std::vector<IpcComponent> components;
    std::vector<IpcRepeat> repeats;
};

// A document's name of a plating status.
IpcPlating platingOf(const std::string &status);

// The same text in capitals, without blanks, hyphens and underscores: how the revisions' names are compared.
std::string plainName(const std::string &name);

} // namespace QvDbWrap

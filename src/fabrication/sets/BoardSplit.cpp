// Boards by common starts of names, by folders and by extents.
#include "fabrication/sets/BoardSplit.h"

#include "fabrication/sets/FileReading.h"
#include "fabrication/sets/NameRules.h"
#include "host/FileSystem/Path.h"

#include <algorithm>
#include <functional>
#include <map>
#include <set>

namespace EDA::Fabrication {

namespace {

using Groups = std::vector<BoardGroup>;
using Key = std::function<std::string(SetFile const &)>;
using Bound = Geometry::Bound2D;

std::string folderOf(SetFile const &file) { return FileSystem::Path::stripLastToken(file.shown); }
std::string stemKey(SetFile const &file) { return boardStem(file.file); }

// Whether a layer of the board is there twice.
bool isCrowded(std::vector<SetFile> const &files, std::vector<std::size_t> const &group) {
    std::set<std::pair<double, bool>> places;
    for (const std::size_t index : group) {
        SetFile const &file = files[index];
        if (file.hasPlace && !places.insert({file.place, file.isCounted}).second) return true;
    }
    return false;
}

Groups groupBy(std::vector<SetFile> const &files, std::vector<std::size_t> const &copper, Key const &key) {
    Groups groups;
    std::map<std::string, std::size_t> places;
    for (const std::size_t index : copper) {
        const std::string name = key(files[index]);
        const auto [place, isNew] = places.emplace(name, groups.size());
        if (isNew) groups.push_back({name, {}, {}});
        groups[place->second].files.push_back(index);
    }
    return groups;
}

bool isSplit(std::vector<SetFile> const &files, Groups const &groups) {
    return groups.size() > 1 && std::none_of(groups.begin(), groups.end(), [&files](BoardGroup const &group) {
               return isCrowded(files, group.files);
           });
}

double areaOf(Bound const &bound) { return bound.isValid() ? bound.getXSize() * bound.getYSize() : 0.0; }

double sharedArea(Bound const &a, Bound const &b) {
    const double width = std::min(a.getXHigh(), b.getXHigh()) - std::max(a.getXLow(), b.getXLow());
    const double height = std::min(a.getYHigh(), b.getYHigh()) - std::max(a.getYLow(), b.getYLow());
    return a.isValid() && b.isValid() && width > 0.0 && height > 0.0 ? width * height : 0.0;
}

bool liesOn(Bound const &a, Bound const &b) {
    constexpr double enough = 0.2; // of the smaller one
    return sharedArea(a, b) > enough * std::min(areaOf(a), areaOf(b));
}

// How much of both they have in common, 0 to 1.
double likeness(Bound const &a, Bound const &b) {
    const double shared = sharedArea(a, b);
    return shared > 0.0 ? shared / (areaOf(a) + areaOf(b) - shared) : 0.0;
}

// Puts together what `join` accepts. Quadratic in the groups, of which there are few.
Groups joined(Groups const &groups, std::function<bool(Bound const &, Bound const &)> const &join) {
    Groups result;
    for (BoardGroup const &group : groups) {
        const auto found = std::find_if(result.begin(), result.end(), [&](BoardGroup const &other) {
            return join(other.bound, group.bound) || areaOf(group.bound) == 0.0;
        });
        if (found == result.end()) {
            result.push_back(group);
            continue;
        }
        found->files.insert(found->files.end(), group.files.begin(), group.files.end());
        found->bound.unite(group.bound);
    }
    return result;
}

void measure(std::vector<SetFile> &files, Groups &groups) {
    for (BoardGroup &group : groups)
        for (const std::size_t index : group.files)
            group.bound.unite(extentsOf(files[index]));
}

// Layers that are drawn on nearly the same rectangle are of one board.
Groups splitByExtents(std::vector<SetFile> &files, std::vector<std::size_t> const &copper) {
    constexpr double alike = 0.8;
    Groups single = groupBy(files, copper, [](SetFile const &file) { return file.shown; });
    measure(files, single);
    return joined(single, [](Bound const &a, Bound const &b) { return likeness(a, b) >= alike; });
}

Groups splitCopper(std::vector<SetFile> &files, std::vector<std::size_t> const &copper, Key &key) {
    key = stemKey;
    Groups byStem = groupBy(files, copper, key);
    if (!isCrowded(files, copper)) {
        if (byStem.size() < 2) return byStem;
        // Other names alone make no other board: "GND.gbr" lies on "top.gbr".
        measure(files, byStem);
        return joined(byStem, liesOn);
    }
    const Key both = [](SetFile const &file) { return folderOf(file) + "/" + stemKey(file); };
    for (Key const &each : {Key(stemKey), Key(folderOf), both}) {
        key = each;
        Groups groups = groupBy(files, copper, key);
        if (isSplit(files, groups)) return groups;
    }
    key = stemKey;
    Groups byExtents = splitByExtents(files, copper);
    return isSplit(files, byExtents) ? byExtents : byStem;
}

bool canGoWith(SetFile const &file) {
    return file.use == FileUse::Drill || file.use == FileUse::Profile || file.use == FileUse::Other;
}

// The board on which most of the file lies, or none.
BoardGroup *findByExtents(std::vector<SetFile> &files, Groups &groups, std::size_t index) {
    Bound bound = extentsOf(files[index]);
    if (files[index].use == FileUse::Drill && !files[index].isLayerForm) {
        DrillData data;
        Notes notes;
        std::string error;
        if (readDrills(files[index], DrillSurroundings(), data, notes, error)) bound = data.bound;
    }
    BoardGroup *best = nullptr;
    for (BoardGroup &group : groups)
        if (liesOn(bound, group.bound) &&
            (!best || likeness(bound, group.bound) > likeness(bound, best->bound)))
            best = &group;
    return best;
}

void addOthers(std::vector<SetFile> &files, Groups &groups, Key const &key) {
    std::vector<std::size_t> open;
    for (std::size_t index = 0; index < files.size(); ++index) {
        if (!canGoWith(files[index])) continue;
        const std::string name = key(files[index]);
        const auto found = std::find_if(groups.begin(), groups.end(),
                                        [&name](BoardGroup const &group) { return group.name == name; });
        if (found != groups.end())
            found->files.push_back(index);
        else
            open.push_back(index);
    }
    if (open.empty()) return;
    for (BoardGroup &group : groups)
        if (!group.bound.isValid())
            for (const std::size_t index : group.files)
                if (files[index].use == FileUse::Copper) group.bound.unite(extentsOf(files[index]));
    for (const std::size_t index : open)
        if (BoardGroup *const group = findByExtents(files, groups, index)) group->files.push_back(index);
}

// Names that a user can give: none is empty, and no two are equal.
void nameGroups(std::vector<SetFile> const &files, Groups &groups) {
    std::set<std::string> names;
    for (BoardGroup &group : groups) {
        std::string name = FileSystem::Path::getLastToken(group.name);
        if (name.empty()) name = stemOf(files[group.files.front()].file);
        const std::string first = name;
        for (int number = 2; !names.insert(name).second; ++number)
            name = first + "-" + std::to_string(number);
        group.name = name;
    }
}

} // namespace

std::vector<BoardGroup> splitBoards(std::vector<SetFile> &files) {
    std::vector<std::size_t> copper;
    for (std::size_t index = 0; index < files.size(); ++index)
        if (files[index].use == FileUse::Copper) copper.push_back(index);
    Key key;
    Groups groups = splitCopper(files, copper, key);
    if (groups.size() > 1) {
        addOthers(files, groups, key);
        nameGroups(files, groups);
    }
    return groups;
}

} // namespace EDA::Fabrication

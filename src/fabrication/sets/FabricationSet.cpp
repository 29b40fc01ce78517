// Sorting the files of a set.
#include "fabrication/sets/FabricationSet.h"

#include "fabrication/board/BoardEdge.h"
#include "fabrication/sets/BoardSplit.h"
#include "fabrication/sets/DrillSpans.h"
#include "fabrication/sets/FileForm.h"
#include "fabrication/sets/FileReading.h"
#include "fabrication/sets/FileRoles.h"
#include "fabrication/sets/LayerLists.h"
#include "fabrication/sets/LayerOrder.h"
#include "fabrication/sets/SameDrills.h"
#include "host/FileSystem/Path.h"
#include "text/Text.h"

#include <algorithm>
#include <set>

namespace EDA::Fabrication {

namespace {

using Files = std::vector<SetFile>;

constexpr double edgeGap = 0.05; // mm between the ends of strokes that meet

// The sorting of one set, step by step.
class Sorter {
public:
    Sorter(Files files, SetSettings const &settings, FabricationSet &set)
        : files_(std::move(files)), settings_(settings), set_(set) {}

    bool sort(std::string &error) {
        settleByRestOfNames(files_);
        applyLists(files_);
        for (SetFile const &file : files_)
            if (!file.isReadable)
                set_.warnings.push_back(inQuotes(file.shown) + " is left out: " + file.reason);
        if (!applyNames(error) || !chooseBoard(error)) return false;
        settleUnknownCopper();
        takeCopper();
        takeDrills();
        takeProfile();
        for (SetFile &file : files_)
            set_.leftOut.push_back(std::move(file));
        if (!setSpans(set_, settings_, error)) return false;
        dropSameDrills(set_, settings_, copperBound());
        cut(set_.guesses);
        cut(set_.warnings);
        return true;
    }

private:
    // The file that the settings name, or null with a reason.
    SetFile *find(std::string const &name, std::string const &what, std::string &error) {
        SetFile *found = nullptr;
        for (SetFile &file : files_)
            if (file.file == name || file.shown == name) return &file;
        for (SetFile &file : files_) {
            if (!meansFile(name, file)) continue;
            if (found) {
                error = what + " names " + inQuotes(name) + ", which may be " + inQuotes(found->shown) +
                        " or " + inQuotes(file.shown);
                return nullptr;
            }
            found = &file;
        }
        if (!found) error = what + " names " + inQuotes(name) + ", which is none of the files";
        return found;
    }

    // What the settings name is what they say, whatever the file says.
    bool applyNames(std::string &error) {
        if (!settings_.layerOrder.empty() && !applyOrder(error)) return false;
        if (settings_.profile.empty()) return true;
        SetFile *const file = find(settings_.profile, "the board outline", error);
        if (!file) return false;
        if (!file->isLayerForm) {
            error = inQuotes(file->shown) + " has not the form of a layer, so it holds no board outline";
            return false;
        }
        file->use = FileUse::Profile;
        file->meaning = "board outline";
        file->reason = "the settings name it";
        file->isGuess = false;
        return true;
    }

    bool applyOrder(std::string &error) {
        double place = 0.0;
        std::vector<SetFile *> layers;
        for (std::string const &name : settings_.layerOrder) {
            SetFile *const file = find(name, "the layer order", error);
            if (!file) return false;
            if (!file->isLayerForm) error = inQuotes(file->shown) + " has not the form of a layer";
            if (std::find(layers.begin(), layers.end(), file) != layers.end())
                error = "the layer order names " + inQuotes(file->shown) + " twice";
            if (!error.empty()) return false;
            layers.push_back(file);
        }
        std::set<std::string> others;
        for (SetFile &file : files_) {
            if (file.use != FileUse::Copper) continue;
            others.insert(boardStem(file.file));
            file.use = FileUse::Other;
            file.meaning = "copper";
            file.reason = "the layer order does not name it";
        }
        for (SetFile *const file : layers)
            others.erase(boardStem(file->file));
        leaveOutOf(others);
        for (SetFile *const file : layers) {
            file->use = FileUse::Copper;
            file->meaning.clear();
            file->reason = "the layer order names it";
            file->isGuess = file->isCounted = false;
            file->hasPlace = true;
            file->place = ++place;
        }
        return true;
    }

    // Drills and outlines of the boards whose layers the layer order passes over.
    void leaveOutOf(std::set<std::string> const &stems) {
        for (SetFile &file : files_) {
            const bool isTold = file.use == FileUse::Drill || file.use == FileUse::Profile;
            if (!isTold || stems.count(boardStem(file.file)) == 0) continue;
            file.use = FileUse::Other;
            file.reason = "it belongs to layers that the layer order does not name";
            isOfOther_.insert(file.file);
        }
    }

    bool chooseBoard(std::string &error) {
        const std::vector<BoardGroup> groups = splitBoards(files_);
        if (groups.size() < 2) {
            if (settings_.board.empty()) return true;
            error = "there is no board " + inQuotes(settings_.board) + ": all files are of one";
            return false;
        }
        const auto mostFiles =
            std::max_element(groups.begin(), groups.end(),
                             [](auto const &a, auto const &b) { return a.files.size() < b.files.size(); });
        auto chosen = settings_.board.empty()
                          ? mostFiles
                          : std::find_if(groups.begin(), groups.end(), [this](auto const &g) {
                                return equalsIgnoreCase(g.name, settings_.board);
                            });
        const std::string list = listedGroups(groups);
        if (chosen == groups.end()) {
            error = "there is no board " + inQuotes(settings_.board) + "; there are " + list;
            return false;
        }
        if (settings_.board.empty())
            set_.warnings.push_back("the files are of " + std::to_string(groups.size()) + " boards, " + list +
                                    "; " + inQuotes(chosen->name) +
                                    " is taken, as it has the most files; another is taken by its name");
        leaveOut(groups, *chosen);
        return true;
    }

    std::string listedGroups(std::vector<BoardGroup> const &groups) {
        constexpr std::size_t shown = 20;
        std::string text;
        for (BoardGroup const &group : groups) {
            set_.boards.push_back(group.name);
            if (set_.boards.size() > shown) continue;
            text += (text.empty() ? "" : ", ") + inQuotes(group.name) + " (" +
                    std::to_string(group.files.size()) + (group.files.size() == 1 ? " file)" : " files)");
        }
        return text + (groups.size() > shown ? ", ..." : "");
    }

    void leaveOut(std::vector<BoardGroup> const &groups, BoardGroup const &chosen) {
        for (BoardGroup const &group : groups) {
            if (&group == &chosen) continue;
            for (const std::size_t index : group.files) {
                SetFile &file = files_[index];
                file.reason = "it belongs to the board " + inQuotes(group.name);
                if (file.use == FileUse::Copper) file.meaning = "copper";
                file.use = FileUse::Other;
                isOfOther_.insert(file.file);
            }
        }
    }

    // Where the copper of a set says itself which layers there are, a file that says nothing is none of them.
    void settleUnknownCopper() {
        const auto isUnknown = [](SetFile const &file) {
            return file.use == FileUse::Copper && file.isGuess && !file.hasPlace &&
                   findByWords(stemOf(file.file)).use == FileUse::None;
        };
        std::size_t numSaid = 0, numNamed = 0;
        for (SetFile const &file : files_) {
            if (file.use != FileUse::Copper || isUnknown(file)) continue;
            ++(file.isGuess ? numNamed : numSaid);
        }
        for (SetFile &file : files_) {
            if (!isUnknown(file)) continue;
            if (numSaid > 1 && numNamed == 0) {
                file.use = FileUse::Other;
                file.reason = "the copper layers beside it say themselves what they are, it does not";
                set_.warnings.push_back(inQuotes(file.shown) + " is left out: " + file.reason);
            } else {
                set_.guesses.push_back(inQuotes(file.shown) + " is taken as copper: " + file.reason);
            }
        }
    }

    // Moves the files of one use out, in their order.
    Files takeAll(FileUse use) {
        Files taken, rest;
        for (SetFile &file : files_)
            (file.use == use ? taken : rest).push_back(std::move(file));
        files_ = std::move(rest);
        return taken;
    }

    void takeCopper() {
        Files copper = takeAll(FileUse::Copper);
        orderLayers(copper, set_);
        set_.copper = std::move(copper);
    }

    void takeDrills() {
        for (SetFile &file : takeAll(FileUse::Drill)) {
            SetDrill drill;
            drill.plated = file.drill.plated;
            std::vector<std::string> const &function = file.layer.attribute(".FileFunction");
            if (!drill.plated && file.isLayerForm && !function.empty() && function.front() != "MixedPlating")
                drill.plated = platingByName(function.front());
            if (!drill.plated) drill.plated = platingByName(stemOf(file.file));
            drill.file = std::move(file);
            set_.drills.push_back(std::move(drill));
        }
    }

    // By what says that it is the edge; the file's own word before its name.
    static int rankOf(SetFile const &file) {
        const bool isNamed = file.use == FileUse::Profile;
        if (isNamed && file.reason == "the settings name it") return 0;
        if (isNamed && file.isByForm) return 5;
        if (isNamed && !file.isGuess) return 1;
        if (isNamed && findByExtension(extensionOf(file)).use == FileUse::Profile) return 2;
        return isNamed ? 3 : 4;
    }

    static std::string extensionOf(SetFile const &file) {
        return FileSystem::Path::getExtension(file.file, true);
    }

    // Whether its strokes make closed paths, or it draws regions; where it is no more than a drawing, one of
    // them must lie about the copper.
    bool closes(SetFile const &file, bool isDrawing) {
        std::string text, error;
        if (!readText(file.file, text, error)) return false;
        ProfileSink sink;
        Notes notes;
        readLayerFile(text, LayerRules(), sink, notes);
        const std::vector<Path> paths = closedPaths(sink, edgeGap, notes);
        const Geometry::Bound2D copper = isDrawing ? copperBound() : Geometry::Bound2D();
        return std::any_of(paths.begin(), paths.end(), [&](Path const &path) {
            Geometry::Bound2D bound;
            bound.unite(path.start.x, path.start.y);
            for (Segment const &segment : path.segments)
                bound.unite(segment.end.x, segment.end.y);
            return !copper.isValid() || isAround(bound, copper);
        });
    }

    // Notes beside a board are of its copper layers, too: the edge need not go around all.
    static bool isAround(Geometry::Bound2D const &edge, Geometry::Bound2D const &copper) {
        constexpr double enough = 0.3; // of the copper's extents
        const double width =
            std::min(edge.getXHigh(), copper.getXHigh()) - std::max(edge.getXLow(), copper.getXLow());
        const double height =
            std::min(edge.getYHigh(), copper.getYHigh()) - std::max(edge.getYLow(), copper.getYLow());
        return width > 0.0 && height > 0.0 && width * height > enough * copper.getXSize() * copper.getYSize();
    }

    void takeProfile() {
        std::vector<std::size_t> candidates;
        for (std::size_t index = 0; index < files_.size(); ++index) {
            SetFile const &file = files_[index];
            const bool isDrawing = file.use == FileUse::Other && file.isMechanical && file.isLayerForm;
            if ((file.use == FileUse::Profile || isDrawing) && isOfOther_.count(file.file) == 0)
                candidates.push_back(index);
        }
        std::stable_sort(candidates.begin(), candidates.end(), [this](std::size_t a, std::size_t b) {
            return rankOf(files_[a]) < rankOf(files_[b]);
        });
        for (std::size_t at = 0; at < candidates.size() && set_.profiles.empty(); ++at) {
            SetFile &file = files_[candidates[at]];
            const bool isLast = at + 1 == candidates.size();
            const bool isFirstWord = rankOf(file) < 2;
            const bool isDrawing = rankOf(file) == 4;
            if (!isFirstWord && (isDrawing || !isLast) && !closes(file, isDrawing)) continue;
            if (isDrawing)
                set_.guesses.push_back(inQuotes(file.shown) + " is taken for the board outline: it is " +
                                       file.meaning +
                                       ", but it holds closed paths, and nothing better is there");
            if (file.isByForm && rankOf(file) != 0)
                set_.guesses.push_back(inQuotes(file.shown) +
                                       " is taken for the board outline: " + file.reason);
            file.use = FileUse::Profile;
            set_.profiles.push_back(std::move(file));
            files_.erase(files_.begin() + static_cast<std::ptrdiff_t>(candidates[at]));
        }
        if (!set_.profiles.empty()) {
            for (SetFile &file : files_)
                if (file.use == FileUse::Profile)
                    file.reason += "; " + inQuotes(set_.profiles.front().shown) + " is taken before it";
        }
    }

    Geometry::Bound2D copperBound() {
        return set_.copper.empty() ? Geometry::Bound2D() : extentsOf(set_.copper.front());
    }

    // A set of thousands of files may have as many lines to tell.
    static void cut(std::vector<std::string> &lines) {
        constexpr std::size_t most = 1000;
        if (lines.size() <= most) return;
        const std::size_t more = lines.size() - most;
        lines.resize(most);
        lines.push_back("and " + std::to_string(more) + " more of this kind");
    }

    Files files_;
    SetSettings const &settings_;
    FabricationSet &set_;
    std::set<std::string> isOfOther_; // files of boards that are not taken
};

} // namespace

bool sortSet(std::vector<SetFile> files, SetSettings const &settings, FabricationSet &set,
             std::string &error) {
    set = FabricationSet();
    error.clear();
    return Sorter(std::move(files), settings, set).sort(error);
}

} // namespace EDA::Fabrication

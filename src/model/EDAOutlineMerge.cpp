// Groups of overlapping outlines, and their union.
#include "model/EDAOutlineMerge.h"

#include "host/Tools/EntityModelConstantTr.h"
#include "host/Tools/ToolProgress.h"
#include "model/OverlapSearch.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace EDA {

namespace {

void startStep(Tools::ToolProgress *progress, char const *text, std::size_t maximum) {
    if (!progress) return;
    progress->setText(EntityModel::EntityModelConstantTr::tr(text, nullptr, -1).toStdString() + " ...");
    progress->setMaximum(static_cast<int>(maximum));
    progress->start();
}

bool isCancelled(Tools::ToolProgress *progress) { return progress && progress->isCancelled(); }

} // namespace

bool EDAOutlineMerge::mergeConductors(Tools::ToolProgress *progress) {
    OverlapMap overlaps;
    if (!findOverlaps(overlaps, progress)) return false;
    mergeAllGroups(overlaps, progress);
    outlines_.erase(std::remove_if(outlines_.begin(), outlines_.end(),
                                   [](EDAOutline const &outline) { return outline.empty(); }),
                    outlines_.end());
    return true;
}

bool EDAOutlineMerge::findOverlaps(OverlapMap &overlaps, Tools::ToolProgress *progress) {
    startStep(progress, "Find Overlapping Conductors", outlines_.size());
    OverlapSearch search(outlines_);
    for (std::size_t i = 0; i < outlines_.size(); ++i) {
        search.addLater(i, overlaps);
        if (!progress) continue;
        progress->setValue(static_cast<int>(i));
        if (progress->isCancelled()) break;
    }
    overlaps.sort(outlines_.size());
    return !overlaps.empty();
}

void EDAOutlineMerge::findOverlapsAmong(std::vector<std::size_t> const &members, OverlapMap &overlaps,
                                        Tools::ToolProgress *progress) {
    OverlapSearch search(outlines_, &members);
    for (std::size_t const member : members) {
        search.addLater(member, overlaps);
        if (isCancelled(progress)) break;
    }
    overlaps.sort(outlines_.size());
}

// Where the first of a group cannot be clipped, the others may hang together without it; and so on, where the
// first of those is such another.
void EDAOutlineMerge::mergeAllGroups(OverlapMap const &overlaps, Tools::ToolProgress *progress) {
    startStep(progress, "Merge Conductors", overlaps.keys().size());
    std::size_t count = 0;
    std::vector<std::size_t> left = mergeGroups(overlaps, progress, count);
    while (!left.empty() && !isCancelled(progress)) {
        OverlapMap among;
        findOverlapsAmong(left, among, progress);
        left = mergeGroups(among, progress, count);
    }
}

// Gives, ascending, the members of groups whose first cannot be clipped, but for these first ones.
std::vector<std::size_t> EDAOutlineMerge::mergeGroups(OverlapMap const &overlaps,
                                                      Tools::ToolProgress *progress, std::size_t &count) {
    std::vector<bool> seen(outlines_.size());
    std::vector<std::size_t> left;
    for (std::size_t const key : overlaps.keys()) {
        if (seen[key] || outlines_[key].empty()) continue;
        std::vector<EDAOutline *> toMerge;
        getConductorsToMerge(key, overlaps, seen, toMerge);
        if (!toMerge.empty() && !mergeConductors(outlines_[key], toMerge, progress, count)) {
            for (EDAOutline const *each : toMerge)
                left.push_back(static_cast<std::size_t>(each - outlines_.data()));
        }
        if (isCancelled(progress)) break;
    }
    std::sort(left.begin(), left.end());
    return left;
}

// Depth first, but all neighbours of an outline before their own; without recursion, since a chain of strokes
// may be as long as the set.
void EDAOutlineMerge::getConductorsToMerge(std::size_t root, OverlapMap const &overlaps,
                                           std::vector<bool> &seen, std::vector<EDAOutline *> &toMerge) {
    std::vector<std::size_t> open{root};
    seen[root] = true;
    while (!open.empty()) {
        std::size_t const index = open.back();
        open.pop_back();
        std::size_t const numOpen = open.size();
        overlaps.forEachNeighbour(index, [&](std::size_t neighbour) {
            if (seen[neighbour] || outlines_[neighbour].empty()) return;
            seen[neighbour] = true;
            toMerge.push_back(&outlines_[neighbour]);
            open.push_back(neighbour);
        });
        std::reverse(open.begin() + static_cast<std::ptrdiff_t>(numOpen), open.end());
    }
}

bool EDAOutlineMerge::mergeConductors(EDAOutline &root, std::vector<EDAOutline *> &toMerge,
                                      Tools::ToolProgress *progress, std::size_t &count) {
    root.setModelDimension(modelDimension_);
    std::vector<EDAOutline> extra;
    if (!root.mergeOutlines(toMerge, extra, progress, count)) return false;
    // Those that a cancel left out go too.
    for (EDAOutline *merged : toMerge)
        merged->clear();
    // This may move the outlines: nothing points to them any more.
    outlines_.insert(outlines_.end(), std::make_move_iterator(extra.begin()),
                     std::make_move_iterator(extra.end()));
    if (progress) progress->setValue(static_cast<int>(++count));
    return true;
}

} // namespace EDA

// Merges the outlines of a layer that overlap.
#pragma once

#include "model/EDAOutline.h"

#include <cstddef>
#include <vector>

namespace Tools {
class ToolProgress;
}

namespace EDA {

class OverlapMap;

// A set of outlines, and the merging of those that overlap into few with holes. Lengths are the caller's.
//
//     EDAOutlineMerge conductors;
//     for (...) conductors.addOutline(outline);
//     conductors.mergeConductors(nullptr);
//     for (EDAOutline &outline : conductors) ...
class EDAOutlineMerge {
public:
    using iterator = std::vector<EDAOutline>::iterator;

    EDAOutlineMerge() = default;
    EDAOutlineMerge(EDAOutlineMerge const &) = default;
    EDAOutlineMerge(EDAOutlineMerge &&) = default;
    EDAOutlineMerge &operator=(EDAOutlineMerge const &) = default;
    EDAOutlineMerge &operator=(EDAOutlineMerge &&) = default;
    virtual ~EDAOutlineMerge() = default;

    void addOutline(EDAOutline const &outline) { outlines_.push_back(outline); }
    void addOutline(EDAOutline &&outline) { outlines_.push_back(std::move(outline)); }
    // Removes all outlines; the model dimension stays.
    void clear() { outlines_.clear(); }
    // Given to the first outline of each group before its arcs are cut into segments; see
    // `EDAOutline::setModelDimension`.
    void setModelDimension(double dimension) { modelDimension_ = dimension; }

    std::size_t size() const { return outlines_.size(); }
    iterator begin() { return outlines_.begin(); }
    iterator end() { return outlines_.end(); }

    // Unites each group of outlines that overlap (`EDAOutline::overlaps`), directly or through others, into
    // the first of them (`EDAOutline::mergeOutlines`); further pieces go behind the others. The rest keeps
    // its order. False, and nothing has changed, when no two overlap. An outline that cannot be clipped stays
    // as it is; behind the others, where it is not the first of its group.
    //
    // `progress` may be null. A cancel while overlaps are searched uses those found so far; one while a group
    // is united loses the outlines of that group that were not yet taken, and leaves the groups after it as
    // they are.
    bool mergeConductors(Tools::ToolProgress *progress);

private:
    bool findOverlaps(OverlapMap &overlaps, Tools::ToolProgress *progress);
    void findOverlapsAmong(std::vector<std::size_t> const &members, OverlapMap &overlaps,
                           Tools::ToolProgress *progress);
    void mergeAllGroups(OverlapMap const &overlaps, Tools::ToolProgress *progress);
    std::vector<std::size_t> mergeGroups(OverlapMap const &overlaps, Tools::ToolProgress *progress,
                                         std::size_t &count);
    void getConductorsToMerge(std::size_t root, OverlapMap const &overlaps, std::vector<bool> &seen,
                              std::vector<EDAOutline *> &toMerge);
    bool mergeConductors(EDAOutline &root, std::vector<EDAOutline *> &toMerge, Tools::ToolProgress *progress,
                         std::size_t &count);

    std::vector<EDAOutline> outlines_;
    double modelDimension_ = -1.0;
};

} // namespace EDA

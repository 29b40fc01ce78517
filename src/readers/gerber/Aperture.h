// A shape while it is put together from solid and clear parts.
#pragma once

#include "model/EDAOutline.h"
#include "readers/gerber/WorkBudget.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace EDA {

// Solid pieces that do not touch each other. Parts are added and cut in the order of the file.
//
//     Aperture aperture;
//     aperture.addOutline(band);
//     aperture.addOutline(startDisc);
//     aperture.addOutline(endDisc);
//     for (EDAOutline &piece : aperture) ...
class Aperture {
public:
    using iterator = std::vector<EDAOutline>::iterator;

    // What is not granted by the budget, where there is one, is not done.
    explicit Aperture(WorkBudget *budget = nullptr) : budget_(budget) {}
    Aperture(const Aperture &) = default;
    Aperture &operator=(const Aperture &) = default;
    virtual ~Aperture() = default;

    // Cuts a hole, or adds a solid with its holes and, after it, each of its internal outlines that is solid.
    void addOutline(const EDAOutline &outline);

    // Takes a shape out of each piece that it touches (`EDAOutline::intersectsHole`). Its internal outlines
    // don't count.
    void cutOutline(const EDAOutline &hole);

    // Unites the outline with the pieces that it overlaps, by vertices (`EDAOutline::overlaps`), and with
    // what they reach then. Parts that fall off in a union are lost: that is intended.
    void addSolid(const EDAOutline &outline);

    // Adds a piece that is known to touch no other.
    void addApart(EDAOutline &&piece) { pieces_.push_back(std::move(piece)); }

    // Makes the first piece the points and internal outlines of the result, and appends the other pieces as
    // internal outlines that are solid, each followed by its own. Nothing without pieces.
    void combineInto(EDAOutline &result) const;

    iterator begin() { return pieces_.begin(); }
    iterator end() { return pieces_.end(); }
    bool empty() const { return pieces_.empty(); }

private:
    bool spend(std::size_t steps) { return !budget_ || budget_->spend(steps); }
    bool mayMeet(const EDAOutline &piece, const EDAOutline &outline);
    bool touchesHole(const EDAOutline &piece, const EDAOutline &hole);
    bool overlap(const EDAOutline &piece, const EDAOutline &outline);
    bool merge(EDAOutline &piece, const EDAOutline &outline);
    void spendOnGrowth(std::size_t before, std::size_t after);
    void joinWith(std::size_t grown);
    bool cut(EDAOutline &piece, const EDAOutline &hole, std::vector<EDAOutline> &parts);

    std::vector<EDAOutline> pieces_;
    WorkBudget *budget_;
};

} // namespace EDA

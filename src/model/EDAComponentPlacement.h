// A component placed on a board.
#pragma once

#include "model/DefinitionTable.h"
#include "model/EDABump.h"
#include "model/EDAHeatsink.h"
#include "model/KeyWatch.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace EDA {

// One placed instance of a component definition, which it names by name and part number
// (`EDABoard::findComponent`). Lengths are in the board's units, angles in degrees.
class EDAComponentPlacement {
public:
    using BumpIterator = std::vector<EDABump>::const_iterator;

    EDAComponentPlacement();
    EDAComponentPlacement(EDAComponentPlacement const &);
    EDAComponentPlacement(EDAComponentPlacement &&) noexcept;
    EDAComponentPlacement &operator=(EDAComponentPlacement const &);
    EDAComponentPlacement &operator=(EDAComponentPlacement &&) noexcept;
    virtual ~EDAComponentPlacement();

    // The name of the component definition.
    void setName(std::string const &name);
    std::string const &getName() const { return name_; }

    void setPartNumber(std::string const &partNumber);
    std::string const &getPartNumber() const { return partNumber_; }

    void setReferenceDesignator(std::string const &designator) { referenceDesignator_ = designator; }
    std::string const &getReferenceDesignator() const { return referenceDesignator_; }

    // An infinite value is stored as 0; one that is not a number stays as it is.
    void setLocation(double x, double y);
    double getXLocation() const { return xLocation_; }
    double getYLocation() const { return yLocation_; }

    // Mounting height above the board.
    void setOffset(double offset) { offset_ = offset; }
    // Stores the number that the text is. Text with anything behind the number, a blank too,
    // leaves the offset as it was.
    void setOffset(std::string const &text);
    double getOffset() const { return offset_; }

    // Adds whole turns to a negative angle until it is not negative; an angle of 360 or more
    // stays. Minus infinity is stored as 0.
    void setAngle(double angle);
    // The angle of the orientation where one was set, whatever the argument: a mirroring
    // orientation turns the other way, and the result is not negative beyond -1e-6.
    // Otherwise the stored angle; with `mirrorOnBottom`, on the bottom, 360 minus it, but
    // 0 for an angle of at most 1e-6.
    double getAngle(bool mirrorOnBottom) const;

    void setBoardSide(std::string const &side) { boardSide_ = side; }
    std::string const &getBoardSide() const { return boardSide_; }
    // True when the board side is empty or "TOP", without regard to case. All else is the bottom.
    bool isOnBoardTop() const;

    void setStatus(std::string const &status) { status_ = status; }
    std::string const &getStatus() const { return status_; }
    // False when the status is "UNPLACED", without regard to case. All else is placed.
    bool isPlaced() const;

    // A 2-by-2 matrix: x' = xx * x + xy * y, y' = yx * x + yy * y.
    void setOrientation(double xx, double xy, double yx, double yy);
    // The matrix, by default the identity. True when `setOrientation` was called.
    bool getOrientation(double &xx, double &xy, double &yx, double &yy) const;

    // Stores a copy.
    void setHeatsink(EDAHeatsink const &heatsink);
    // Empty when none was set. The reference stays valid until the next `setHeatsink`.
    std::optional<EDAHeatsink> const &getHeatsink() const;

    // As `EDABoard::addBump`, on this placement's bumps.
    void addBump(EDABump const &bump, bool merge);
    // As `EDABoard::findBumpDefinition`, on this placement's bumps.
    EDABump *findBumpDefinition(EDABump const &bump);
    // With 0 the number of definitions, otherwise of definitions and all their instances.
    std::size_t numBumps(int withInstances) const;
    // True when a bump has a type other than 0.
    bool hasBumps() const;
    // A bad index throws `std::out_of_range`.
    EDABump &getBump(std::size_t index);
    EDABump const &getBump(std::size_t index) const;
    BumpIterator beginBumps() const { return bumps_.begin(); }
    BumpIterator endBumps() const { return bumps_.end(); }

    // For look-up tables: from now on, count changes of name and part number.
    void watchKey() const { keyWatch_.watch(); }

private:
    double orientationAngle() const;
    void checkBump(std::size_t index) const;

    std::string name_;
    std::string partNumber_;
    std::string referenceDesignator_;
    double xLocation_ = 0.0;
    double yLocation_ = 0.0;
    double offset_ = 0.0;
    double angle_ = 0.0;
    std::string boardSide_;
    std::string status_;
    bool hasOrientation_ = false;
    double xx_ = 1.0;
    double xy_ = 0.0;
    double yx_ = 0.0;
    double yy_ = 1.0;
    // Never changed in place, so copies share it. Most placements have none: kept elsewhere,
    // it costs a board of a million placements 200 MB less.
    std::shared_ptr<std::optional<EDAHeatsink> const> heatsink_;
    std::vector<EDABump> bumps_;
    LazyTable<DefinitionTable<EDABump>> bumpTable_;
    KeyWatch keyWatch_;
};

} // namespace EDA

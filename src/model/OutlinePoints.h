// The stored vertices of an outline.
#pragma once

#include <cmath>
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

namespace EDA {

// A stored vertex, and the shape of the edge that arrives at it. Known as `EDAOutline::EDAPoint`.
struct OutlinePoint {
    double x;
    double y;
    // Included angle of an arc from the previous vertex to this one, in degrees: positive is anticlockwise, 0
    // a straight edge. Exactly +360 is a full circle: then the previous vertex is its centre and this one a
    // point on it. -360 is no circle.
    double angle = 0.0;
    // Arc centre, meaningful when `centered`.
    double centreX = 0.0;
    double centreY = 0.0;
    // The arriving edge is an arc given by its centre; `angle` is not used.
    bool centered = false;
    // Sense of a centred arc.
    bool clockwise = true;

    // A straight point (angle 0) or the end of an arc of `angleValue` degrees.
    OutlinePoint(double xValue, double yValue, double angleValue) : x(xValue), y(yValue), angle(angleValue) {}
    // The end of an arc about a centre.
    OutlinePoint(double xValue, double yValue, double centreXValue, double centreYValue, bool clockwiseValue)
        : x(xValue), y(yValue), centreX(centreXValue), centreY(centreYValue), centered(true),
          clockwise(clockwiseValue) {}
    OutlinePoint(OutlinePoint const &) = default;
    OutlinePoint(OutlinePoint &&) = default;
    OutlinePoint &operator=(OutlinePoint const &) = default;
    OutlinePoint &operator=(OutlinePoint &&) = default;
    virtual ~OutlinePoint() = default;

    // True when the arriving edge is an arc: |angle| > `EDAOutline::ptTol`, or centred.
    bool isArc() const;
    // Same place within `EDAOutline::ptTol`. The arc fields are not compared.
    bool operator==(OutlinePoint const &other) const;
    bool operator!=(OutlinePoint const &other) const { return !(*this == other); }
    // Coordinates, angle and centre all within `tolerance`, and the same sense. `centered` is not compared: a
    // point that differs only in it counts as a repetition.
    bool isEqual(OutlinePoint const &other, double tolerance) const;
};

// A list of vertices, which it gives out by value. A copper layer has tens of millions of them, nearly all at
// the end of straight edges: so only the places are stored until a vertex comes that has more to say.
class OutlinePoints {
public:
    using Place = std::pair<double, double>;

    // Goes through the vertices. As with a vector, a change of the list makes it invalid.
    class Iterator {
    public:
        using iterator_category = std::random_access_iterator_tag;
        using value_type = OutlinePoint;
        using difference_type = std::ptrdiff_t;
        using reference = OutlinePoint;
        class pointer {
        public:
            explicit pointer(OutlinePoint const &point) : point_(point) {}
            OutlinePoint const *operator->() const { return &point_; }

        private:
            OutlinePoint point_;
        };

        Iterator() = default;
        Iterator(OutlinePoints const &points, std::ptrdiff_t at) : points_(&points), at_(at) {}

        reference operator*() const { return (*points_)[static_cast<std::size_t>(at_)]; }
        pointer operator->() const { return pointer(**this); }
        reference operator[](std::ptrdiff_t step) const { return *(*this + step); }
        Iterator &operator++() { return *this += 1; }
        Iterator &operator--() { return *this -= 1; }
        Iterator operator++(int) { return Iterator(*points_, at_++); }
        Iterator operator--(int) { return Iterator(*points_, at_--); }
        Iterator &operator+=(std::ptrdiff_t step) { return at_ += step, *this; }
        Iterator &operator-=(std::ptrdiff_t step) { return at_ -= step, *this; }
        Iterator operator+(std::ptrdiff_t step) const { return Iterator(*points_, at_ + step); }
        Iterator operator-(std::ptrdiff_t step) const { return Iterator(*points_, at_ - step); }
        friend Iterator operator+(std::ptrdiff_t step, Iterator const &from) { return from + step; }
        std::ptrdiff_t operator-(Iterator const &other) const { return at_ - other.at_; }
        bool operator==(Iterator const &other) const { return at_ == other.at_; }
        bool operator!=(Iterator const &other) const { return at_ != other.at_; }
        bool operator<(Iterator const &other) const { return at_ < other.at_; }
        bool operator>(Iterator const &other) const { return at_ > other.at_; }
        bool operator<=(Iterator const &other) const { return at_ <= other.at_; }
        bool operator>=(Iterator const &other) const { return at_ >= other.at_; }

    private:
        OutlinePoints const *points_ = nullptr;
        std::ptrdiff_t at_ = 0;
    };

    std::size_t size() const { return places_.size(); }
    bool empty() const { return places_.empty(); }
    Iterator begin() const { return Iterator(*this, 0); }
    Iterator end() const { return Iterator(*this, static_cast<std::ptrdiff_t>(size())); }
    OutlinePoint operator[](std::size_t index) const {
        return arcs_.empty() ? withArc(places_[index], straight_) : withArc(places_[index], arcs_[index]);
    }
    OutlinePoint front() const { return (*this)[0]; }
    OutlinePoint back() const { return (*this)[size() - 1]; }

    // True when all edges are straight and all arc fields alike, so that the places say it all.
    bool areStraight() const { return arcs_.empty(); }
    // Where the vertices are.
    std::vector<Place> const &places() const { return places_; }

    void reserve(std::size_t count) { places_.reserve(count); }
    void push_back(OutlinePoint const &point);
    void pop_back();
    void clear();
    void assign(std::vector<OutlinePoint> const &points);
    // Keeps the first `count`.
    void truncate(std::size_t count);
    // Makes one vertex a copy of another.
    void copy(std::size_t from, std::size_t to);
    // The places of `areStraight` vertices, taken out to be worked on and put back.
    std::vector<Place> takePlaces() { return std::exchange(places_, {}); }
    void setPlaces(std::vector<Place> &&places) { places_ = std::move(places); }
    void setPlace(std::size_t index, double x, double y) { places_[index] = {x, y}; }
    // Moves the vertices and the centres, those that mean nothing as well.
    void moveBy(double dx, double dy);

private:
    struct Arc {
        double angle = 0.0;
        double centreX = 0.0;
        double centreY = 0.0;
        bool centered = false;
        bool clockwise = true;
    };
    // A straight vertex has a centre too: one that was moved has been moved with it.
    struct Straight {
        double centreX = 0.0;
        double centreY = 0.0;
    };

    static OutlinePoint withArc(Place const &place, Arc const &arc) {
        OutlinePoint point(place.first, place.second, arc.angle);
        point.centreX = arc.centreX;
        point.centreY = arc.centreY;
        point.centered = arc.centered;
        point.clockwise = arc.clockwise;
        return point;
    }
    static OutlinePoint withArc(Place const &place, Straight const &straight) {
        OutlinePoint point(place.first, place.second, 0.0);
        point.centreX = straight.centreX;
        point.centreY = straight.centreY;
        return point;
    }
    bool takesAsStraight(OutlinePoint const &point) const;
    void storeArcs();

    std::vector<Place> places_;
    std::vector<Arc> arcs_; // empty, or one for each place
    Straight straight_;     // of all vertices while there are no arcs
};

inline void OutlinePoints::push_back(OutlinePoint const &point) {
    if (arcs_.empty() && takesAsStraight(point)) {
        if (places_.empty()) straight_ = {point.centreX, point.centreY};
    } else {
        storeArcs();
        arcs_.push_back({point.angle, point.centreX, point.centreY, point.centered, point.clockwise});
    }
    places_.emplace_back(point.x, point.y);
}

// A centre that is not finite equals none, not even itself. The sign of an angle of 0 is kept, too: writers
// show it.
inline bool OutlinePoints::takesAsStraight(OutlinePoint const &point) const {
    if (point.angle != 0.0 || std::signbit(point.angle) || point.centered || !point.clockwise) return false;
    if (places_.empty()) return point.centreX - point.centreX == 0.0 && point.centreY - point.centreY == 0.0;
    return point.centreX == straight_.centreX && point.centreY == straight_.centreY;
}

} // namespace EDA

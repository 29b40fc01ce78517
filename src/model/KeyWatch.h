// Notices when a stored object's key is changed in place.
#pragma once

#include <cstdint>

namespace EDA {

// Member of the objects that look-up tables find by a key (a name, say). A table marks the
// objects that it knows; their setters of key members report here. When `changes` differs
// from what a table saw last, the table is rebuilt. So a table never answers from a key that
// was changed through an iterator, pointer or reference, and pays nothing while none is.
//
// The count is one for the whole process: a change in one board costs the tables of another
// a needless rebuild, never a wrong answer.
class KeyWatch {
public:
    KeyWatch() = default;
    // A copy stands outside of every table. What is moved, as by a growing vector, stays known.
    KeyWatch(KeyWatch const &) noexcept {}
    KeyWatch(KeyWatch &&other) noexcept : watched_(other.watched_) {}
    // Assigning to an object assigns its key.
    KeyWatch &operator=(KeyWatch const &other) noexcept;
    KeyWatch &operator=(KeyWatch &&other) noexcept;
    ~KeyWatch() = default;

    // Marks the object as known to a table.
    void watch() const { watched_ = true; }

    // To be called by every setter of a key member.
    void keyChanged() const {
        if (watched_) countChange();
    }

    // Number of changes to watched keys so far.
    static std::uint64_t changes();

private:
    static void countChange();

    mutable bool watched_ = false;
};

} // namespace EDA

// How long work tells where it stands, and learns that it shall stop.
#pragma once

#include <string>
#include <vector>

namespace Tools {

namespace Progress {

// What a step may tell beside its number. Derived by hosts that show more than a bar.
class AdditionalProgress {
public:
    virtual ~AdditionalProgress() = default;
};

// Nothing to tell.
class AdditionalProgressNone : public AdditionalProgress {};

} // namespace Progress

// The progress and cancel object that a host gives to readers and to the import.
//
// The work calls start, setMaximum, setValue or addSteps, setText, finish, and asks isCancelled between its
// steps. All of it happens on the caller's thread.
//
// A host derives and overrides what it shows: the protected show... operations receive values that are
// already mapped to the whole bar, and isCancelled says whether the user wants to stop. Every virtual
// operation has a default that does nothing (isCancelled: false).
//
// Sub-ranges: whoever runs a piece of work as a part of a longer one pushes a range first. While ranges
// stand on the stack, setMaximum sets the maximum of the top one and shows nothing, and setValue is mapped
// from the top range down to the bottom one before it is shown.
//
// Example, a reader that fills 0 to 30 of 100:
//     progress.setMaximum(100);
//     ToolProgressRange range(&progress, 0, 30);
//     reader.readFiles(&progress);   // sets a maximum of its own and counts up to it
class ToolProgress {
public:
    using AdditionalProgress = Progress::AdditionalProgress;
    using AdditionalProgressNone = Progress::AdditionalProgressNone;

    ToolProgress() = default;
    ToolProgress(const ToolProgress &) = delete;
    ToolProgress &operator=(const ToolProgress &) = delete;
    virtual ~ToolProgress();

    // The line of text beside the bar, UTF-8.
    virtual void setText(const std::string &text);

    // Whether the work shall stop. Polled often: must be quick.
    virtual bool isCancelled();

    virtual void start();
    virtual void finish();

    // True while nobody knows how long the work takes; a bar then only shows that it goes on.
    virtual void setIndeterminate(bool indeterminate);

    // The value that stands for all of the work, of the top range or, without one, of the bar.
    void setMaximum(int maximum);

    // How far the work is, from 0 to the maximum. In each range from the top to the bottom: the fraction is
    // value / maximum (1 if the maximum is 0), and the value becomes low + (int)((high - low) * fraction),
    // clamped to low and high. The result goes to showValue; without a range the value itself does.
    void setValue(int value, const AdditionalProgress &more = AdditionalProgressNone());

    // setValue to the last value of this level (0 when none was set) plus the steps.
    void addSteps(int steps, const AdditionalProgress &more = AdditionalProgressNone());

    // From now on, values count from 0 to `maximum` and fill `low` to `high` of the level below.
    void pushRange(int low, int high, int maximum = 100);

    // Back to the level below, whose own count goes on where it was. Without a range nothing happens.
    void popRange();

    int numRanges() const { return static_cast<int>(ranges_.size()); }

protected:
    virtual void showMaximum(int maximum);
    virtual void showValue(int value, const AdditionalProgress &more);

private:
    struct Range {
        int low;
        int high;
        int maximum;
        int value; // last value set at this level, for addSteps
    };

    std::vector<Range> ranges_;
    int value_ = 0; // last value set without a range
};

// A range as a scope. The progress may be null: then nothing happens.
class ToolProgressRange {
public:
    ToolProgressRange(ToolProgress *progress, int low, int high, int maximum = 100);
    ~ToolProgressRange();
    ToolProgressRange(const ToolProgressRange &) = delete;
    ToolProgressRange &operator=(const ToolProgressRange &) = delete;

private:
    ToolProgress *progress_;
};

} // namespace Tools

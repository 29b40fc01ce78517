// Undo and redo of edits.
#pragma once

#include "host/EntityModel/Entity.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace EntityModel {

// One recorded edit. It holds what the model does not: the value before, or after once undone.
class UndoRecord {
public:
    virtual ~UndoRecord() = default;
    virtual void undo() = 0;
    virtual void redo() = 0;
};

// The undo steps of the calling thread; a model belongs to one thread.
//
// An edit outside every UndoStackOpener is a step of its own, unless an UndoStackDisabler is in force.
// Deleted entities live as long as a step holds them. The oldest steps are dropped beyond `maxSteps`.
//
// Only edits inside a model are recorded. A tree outside every model, such as a library item that is not yet
// added, may die at any time, so no record may name what is in it. What a step holds takes no edits that
// change the tree.
//
// An unrecorded edit makes steps that were undone unfit for the model. One that moves or removes entities
// makes all steps unfit, since they count on finding them where they left them: then all are forgotten.
class UndoStack {
public:
    static constexpr size_t maxSteps = 1000;

    static UndoStack &instance();
    ~UndoStack();

    bool canUndo() const { return done_ > 0 && depth_ == 0; }
    bool canRedo() const { return done_ < steps_.size() && depth_ == 0; }
    bool undo(); // false when there is nothing to undo, or a step is open
    bool redo();
    const std::string &undoName() const; // of the step that undo would take back, else empty
    size_t numSteps() const { return steps_.size(); }
    size_t numRecords() const; // of the step that undo would take back, else 0
    void clear();              // forgets all steps; destroys what only they held

    // For the editor. An open step takes every record, also under a disabler inside it, so that one step
    // undoes all that was done in it. A disabler that stood before the step keeps it from being recorded.
    void open(const std::string &name);
    void close();
    void disable() { ++disabled_; }
    void enable() { --disabled_; }
    bool isDisabled() const { return disabled_ > 0; }
    bool isRecording() const { return depth_ > 0 ? isOpenRecorded_ : disabled_ == 0; }
    bool isOpen() const { return depth_ > 0; }
    std::uint32_t currentStep() const { return depth_ > 0 ? stepId_ : 0; }
    void add(std::unique_ptr<UndoRecord> record);

    // Was the entity made in the step that is open? Undoing that takes it away whole.
    bool isOfOpenStep(const Entity &entity) const;

    // A value is recorded in two steps around its change: a copy before, or null where no record is needed;
    // then, if the change was made, what becomes of that copy.
    bool needsRecord(const Attribute &attribute) const;
    std::unique_ptr<Attribute> snapshot(const Attribute &attribute) const;
    void addValueChange(Attribute &attribute, std::unique_ptr<Attribute> before);

    // Due where an edit is not recorded: after one that left all entities in place, before one that does not.
    void noteUnrecorded() { dropUndone(); }
    void noteUnrecordedRemoval() { clear(); }

private:
    struct Step {
        std::string name;
        std::vector<std::unique_ptr<UndoRecord>> records;
    };
    void dropUndone();

    std::deque<Step> steps_;
    size_t done_ = 0; // Steps before this index are done, the others undone.
    Step open_;
    int depth_ = 0;
    int disabled_ = 0;
    bool isOpenRecorded_ = true;
    std::uint32_t stepId_ = 0;
};

// A scope whose edits make one undo step of this name. An opener inside another joins the outer step.
class UndoStackOpener {
public:
    explicit UndoStackOpener(const std::string &name, bool = true, bool = true);
    ~UndoStackOpener();
    UndoStackOpener(const UndoStackOpener &) = delete;
    UndoStackOpener &operator=(const UndoStackOpener &) = delete;
};

// A scope whose edits make no steps of their own. Inside an opener they still belong to its step.
class UndoStackDisabler {
public:
    UndoStackDisabler();
    ~UndoStackDisabler();
    UndoStackDisabler(const UndoStackDisabler &) = delete;
    UndoStackDisabler &operator=(const UndoStackDisabler &) = delete;
};

} // namespace EntityModel

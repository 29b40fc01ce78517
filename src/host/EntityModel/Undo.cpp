// The stack of undo steps.
#include "host/EntityModel/Undo.h"

#include <utility>

namespace EntityModel {

namespace {

// A plain pointer, so that models that die late in a thread still find a stack.
thread_local UndoStack *current = nullptr;

struct StackGuard {
    ~StackGuard() {
        delete current;
        current = nullptr;
    }
};

class ValueRecord : public UndoRecord {
public:
    ValueRecord(Attribute &attribute, std::unique_ptr<Attribute> before)
        : attribute_(attribute), other_(std::move(before)) {}

    void undo() override { attribute_.swapValue(*other_); }
    void redo() override { attribute_.swapValue(*other_); }

private:
    Attribute &attribute_;
    std::unique_ptr<Attribute> other_; // What the model does not have now.
};

} // namespace

UndoStack &UndoStack::instance() {
    if (!current) {
        current = new UndoStack;
        static thread_local StackGuard guard;
    }
    return *current;
}

UndoStack::~UndoStack() { clear(); }

bool UndoStack::undo() {
    if (!canUndo()) return false;
    auto &records = steps_[--done_].records;
    for (auto record = records.rbegin(); record != records.rend(); ++record)
        (*record)->undo();
    return true;
}

bool UndoStack::redo() {
    if (!canRedo()) return false;
    for (const auto &record : steps_[done_++].records)
        record->redo();
    return true;
}

const std::string &UndoStack::undoName() const {
    static const std::string none;
    return done_ > 0 ? steps_[done_ - 1].name : none;
}

size_t UndoStack::numRecords() const { return done_ > 0 ? steps_[done_ - 1].records.size() : 0; }

void UndoStack::clear() {
    done_ = 0;
    open_.records.clear();
    steps_.clear();
}

void UndoStack::open(const std::string &name) {
    if (depth_++ > 0) return;
    ++stepId_;
    isOpenRecorded_ = disabled_ == 0;
    open_.name = name;
}

void UndoStack::close() {
    if (--depth_ > 0 || open_.records.empty()) return;
    dropUndone();
    steps_.push_back(std::exchange(open_, Step()));
    if (steps_.size() > maxSteps) steps_.pop_front();
    done_ = steps_.size();
}

void UndoStack::dropUndone() { steps_.resize(done_); }

void UndoStack::add(std::unique_ptr<UndoRecord> record) {
    if (!isRecording()) {
        dropUndone();
    } else if (depth_ > 0) {
        open_.records.push_back(std::move(record));
    } else {
        open("Edit");
        open_.records.push_back(std::move(record));
        close();
    }
}

bool UndoStack::isOfOpenStep(const Entity &entity) const {
    return depth_ > 0 && entity.createdInStep_ == stepId_;
}

bool UndoStack::needsRecord(const Attribute &attribute) const {
    const Entity *const owner = attribute.getOwnerEntity();
    if (!owner || !isRecording()) return false;
    // Undoing the step takes an entity away that the step made; its values need no record of their own.
    return !isOfOpenStep(*owner) && owner->model();
}

std::unique_ptr<Attribute> UndoStack::snapshot(const Attribute &attribute) const {
    return std::unique_ptr<Attribute>(needsRecord(attribute) ? attribute.clone() : nullptr);
}

void UndoStack::addValueChange(Attribute &attribute, std::unique_ptr<Attribute> before) {
    if (before) {
        add(std::make_unique<ValueRecord>(attribute, std::move(before)));
    } else if (!isRecording()) {
        dropUndone();
    }
}

UndoStackOpener::UndoStackOpener(const std::string &name, bool, bool) { UndoStack::instance().open(name); }

UndoStackOpener::~UndoStackOpener() { UndoStack::instance().close(); }

UndoStackDisabler::UndoStackDisabler() { UndoStack::instance().disable(); }

UndoStackDisabler::~UndoStackDisabler() { UndoStack::instance().enable(); }

} // namespace EntityModel

// Reads the index of a component library.
#include "host/EntityCore/LibraryIndex.h"

#include "host/EntityCore/FolderLibrary.h"
#include "host/EntityModel/JsonReadingDetail.h"
#include "host/FileSystem/Path.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <unordered_set>

namespace LibraryManager {

using EntityModel::JsonEvent;
using EntityModel::JsonKind;
using EntityModel::LibraryInterface;

namespace {

constexpr struct {
    const char *word;
    LibraryInterface::MappingType type;
} mappingWords[] = {{"mapped", LibraryInterface::Mapped},
                    {"approximated", LibraryInterface::Approximated},
                    {"do not import", LibraryInterface::DoNotImport},
                    {"not mapped", LibraryInterface::NotMapped}};

constexpr const char *rowKeys[] = {"key", "item", "file", "mapping"};
enum RowKey { Key, Item, File, Mapping, NumRowKeys };

constexpr int maxDepth = 256; // of a value that is passed over

std::string quoted(std::string_view text) {
    constexpr size_t most = 80;
    return "\"" + std::string(text.substr(0, most)) + (text.size() > most ? "...\"" : "\"");
}

// What stands wrong in the text, at its place.
struct Problem {
    size_t offset;
    std::string what;
};

class IndexReader {
public:
    static constexpr const char *moreAfterEnd = "there is more after the end of the index";

    explicit IndexReader(std::function<size_t()> offset) : offset_(std::move(offset)) {}

    bool take(const JsonEvent &event) {
        if (skipped_ > 0) return skip(event);
        switch (state_) {
        case State::Start:
            state_ = State::File;
            return event.kind == JsonKind::StartObject || fail("an index is one JSON object");
        case State::File:
            return takeFile(event);
        case State::Rows:
            return takeRowStart(event);
        case State::Row:
            return takeRow(event);
        case State::End:
            break;
        }
        return fail(moreAfterEnd);
    }

    bool finish() { return hasRows_ || fail("the index has no \"rows\""); }

    const std::string &what() const { return error_.what; }
    size_t errorOffset() const { return error_.offset; }

    // With the place of each row in the text in place of its line.
    std::vector<LibraryRow> takeRows() { return std::move(rows_); }
    std::vector<Problem> takeProblems() { return std::move(problems_); }
    size_t numFurtherProblems() const { return numFurtherProblems_; }

private:
    enum class State { Start, File, Rows, Row, End };

    bool fail(const std::string &what) {
        error_ = {offset_(), what};
        return false;
    }

    bool takeFile(const JsonEvent &event) {
        if (event.kind == JsonKind::EndObject) {
            state_ = State::End;
            return true;
        }
        if (event.kind == JsonKind::Key) return takeFileKey(event.text);
        if (key_ == "format") {
            const bool isRight = event.kind == JsonKind::String && event.text == "eda-library";
            return isRight || fail("the format is not \"eda-library\"");
        }
        if (key_ == "version") {
            const bool isRight = event.kind == JsonKind::Number && event.text == "1";
            return isRight || fail("this version can't be read; version 1 can");
        }
        state_ = State::Rows;
        hasRows_ = true;
        return event.kind == JsonKind::StartArray || fail("\"rows\" must be a list");
    }

    bool takeFileKey(std::string_view key) {
        if (key != "format" && key != "version" && key != "rows") return fail("unknown key " + quoted(key));
        if (!fileKeys_.emplace(key).second) return fail("the key " + quoted(key) + " is there twice");
        key_ = key;
        if (key != "rows" || fileKeys_.size() == 3) return true;
        return fail("\"format\" and \"version\" must stand before \"rows\"");
    }

    bool takeRowStart(const JsonEvent &event) {
        if (event.kind == JsonKind::EndArray) {
            state_ = State::File;
            return true;
        }
        reason_.clear();
        row_ = LibraryRow();
        row_.line = offset_();
        std::fill(std::begin(seen_), std::end(seen_), false);
        if (event.kind == JsonKind::StartObject) {
            state_ = State::Row;
            return true;
        }
        leaveOut("a row must be an object");
        return skip(event);
    }

    bool takeRow(const JsonEvent &event) {
        if (event.kind == JsonKind::EndObject) return endRow();
        if (event.kind == JsonKind::Key) {
            const auto *const found = std::find(std::begin(rowKeys), std::end(rowKeys), event.text);
            current_ = static_cast<int>(found - std::begin(rowKeys));
            if (current_ == NumRowKeys) {
                spoil("unknown key " + quoted(event.text));
            } else if (seen_[current_]) {
                spoil("the key " + quoted(event.text) + " is there twice");
            } else {
                seen_[current_] = true;
            }
            return true;
        }
        if (current_ == NumRowKeys) return skip(event);
        if (event.kind == JsonKind::String) {
            setMember(event.text);
            return true;
        }
        spoil(quoted(rowKeys[current_]) + " must be a text");
        return skip(event);
    }

    void setMember(std::string_view text) {
        if (current_ == Key) row_.key = text;
        if (current_ == Item) row_.item = text;
        if (current_ == File) row_.file = text;
        if (current_ == Mapping) setMapping(text);
    }

    void setMapping(std::string_view word) {
        const auto *const found = std::find_if(std::begin(mappingWords), std::end(mappingWords),
                                               [word](const auto &entry) { return word == entry.word; });
        if (found != std::end(mappingWords)) {
            row_.mapping = found->type;
        } else {
            spoil("unknown mapping " + quoted(word) +
                  "; it is \"mapped\", \"approximated\", \"do not import\" or \"not mapped\"");
        }
    }

    // Only the first reason counts.
    void spoil(const std::string &reason) {
        if (reason_.empty()) reason_ = reason;
    }

    void leaveOut(const std::string &reason) {
        if (problems_.size() < LibraryLimits::messages) {
            problems_.push_back({row_.line, reason});
        } else {
            ++numFurtherProblems_;
        }
    }

    bool endRow() {
        state_ = State::Rows;
        if (row_.key.empty()) spoil("the row has no key");
        const bool needsFile =
            row_.mapping == LibraryInterface::Mapped || row_.mapping == LibraryInterface::Approximated;
        if (needsFile && row_.file.empty()) spoil(quoted(row_.key) + " names no file");
        const char *const notInside = row_.file.empty() ? nullptr : LibraryIndex::whyNotInside(row_.file);
        if (notInside) spoil("the file " + quoted(row_.file) + " " + notInside);
        // A set of its own, since rows that are wrong don't count.
        if (reason_.empty() && !keys_.insert(row_.key).second) {
            spoil("the key " + quoted(row_.key) + " is there twice; the first row stands");
        }
        if (reason_.empty()) {
            rows_.push_back(std::move(row_));
        } else {
            leaveOut(reason_);
        }
        return true;
    }

    // Passes over a value and all in it.
    bool skip(const JsonEvent &event) {
        if (event.kind == JsonKind::StartObject || event.kind == JsonKind::StartArray) ++skipped_;
        if (event.kind == JsonKind::EndObject || event.kind == JsonKind::EndArray) --skipped_;
        return skipped_ <= maxDepth || fail("nested more than " + std::to_string(maxDepth) + " deep");
    }

    std::function<size_t()> offset_;
    State state_ = State::Start;
    int skipped_ = 0; // open objects and arrays of a value that is passed over
    bool hasRows_ = false;
    std::string key_; // of the file
    std::unordered_set<std::string> fileKeys_;

    int current_ = NumRowKeys; // key of the row
    bool seen_[NumRowKeys] = {};
    LibraryRow row_;
    std::string reason_; // why the row is left out

    std::vector<LibraryRow> rows_;
    std::unordered_set<std::string> keys_;
    std::vector<Problem> problems_;
    size_t numFurtherProblems_ = 0;
    Problem error_{0, ""};
};

// Lines of ascending places in a text, in one pass over it.
class LineCounter {
public:
    explicit LineCounter(std::string_view text) : text_(text) {}

    size_t lineOf(size_t offset) {
        for (; place_ < std::min(offset, text_.size()); ++place_)
            line_ += text_[place_] == '\n' ? 1 : 0;
        return line_;
    }

private:
    std::string_view text_;
    size_t place_ = 0;
    size_t line_ = 1;
};

} // namespace

bool LibraryIndex::parse(std::string_view text, const std::string &name, LibraryIndex &index,
                         std::string &error) {
    index = LibraryIndex();
    const auto reader = EntityModel::readJson<IndexReader>(text, name, error, [](IndexReader &read) {
        return read.finish() ? std::make_unique<IndexReader>(std::move(read)) : nullptr;
    });
    if (!reader) return false;
    text = EntityModel::withoutByteOrderMark(text); // places are counted behind it
    LineCounter rowLines(text);
    index.rows = reader->takeRows();
    for (LibraryRow &row : index.rows)
        row.line = rowLines.lineOf(row.line);
    LineCounter problemLines(text);
    for (const Problem &problem : reader->takeProblems()) {
        const std::string line = std::to_string(problemLines.lineOf(problem.offset));
        index.messages.push_back(name + ":" + line + ": " + problem.what);
    }
    index.numFurtherMessages = reader->numFurtherProblems();
    return true;
}

const char *LibraryIndex::whyNotInside(const std::string &file) {
    if (file.front() == '/') return "is not named from the library's folder";
    // On some systems these separate folders, name drives and streams, or end the name.
    constexpr std::string_view refused("\\:\0", 3);
    if (file.find_first_of(refused) != std::string::npos) return "has a \"\\\", a \":\" or a NUL in its name";
    const std::vector<std::string> tokens = FileSystem::Path::getTokens(file);
    if (std::find(tokens.begin(), tokens.end(), "..") != tokens.end()) return "leads out of the library";
    return nullptr;
}

} // namespace LibraryManager

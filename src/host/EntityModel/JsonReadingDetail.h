// JSON text to events, for the files that this host reads as a stream; not for others.
#pragma once

#include "host/EntityModel/ModelValueReader.h"
#include "text/Encoding.h"

#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace EntityModel {

// The text as the JSON reader takes it.
class JsonTextStream {
public:
    using Ch = char;

    explicit JsonTextStream(std::string_view text) : text_(text) {}

    Ch Peek() const { return place_ < text_.size() ? text_[place_] : '\0'; }
    Ch Take() { return place_ < text_.size() ? text_[place_++] : '\0'; }
    size_t Tell() const { return place_; }

    // The JSON reader asks for these of every stream and uses them for reading in place alone.
    Ch *PutBegin() { return nullptr; }
    void Put(Ch) {}
    void Flush() {}
    size_t PutEnd(Ch *) { return 0; }

private:
    std::string_view text_;
    size_t place_ = 0;
};

// Hands the JSON reader's events to the sink.
template <typename Sink>
class JsonHandler : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, JsonHandler<Sink>> {
public:
    explicit JsonHandler(Sink &sink) : sink_(sink) {}

    bool Default() { return false; }
    bool Null() { return take(JsonKind::Null); }
    bool Bool(bool value) { return sink_.take({JsonKind::Bool, {}, value}); }
    bool RawNumber(const char *text, rapidjson::SizeType size, bool) {
        return take(JsonKind::Number, text, size);
    }
    bool String(const char *text, rapidjson::SizeType size, bool) {
        return take(JsonKind::String, text, size);
    }
    bool Key(const char *text, rapidjson::SizeType size, bool) { return take(JsonKind::Key, text, size); }
    bool StartObject() { return take(JsonKind::StartObject); }
    bool EndObject(rapidjson::SizeType) { return take(JsonKind::EndObject); }
    bool StartArray() { return take(JsonKind::StartArray); }
    bool EndArray(rapidjson::SizeType) { return take(JsonKind::EndArray); }

private:
    bool take(JsonKind kind, const char *text = "", size_t size = 0) {
        return sink_.take({kind, std::string_view(text, size)});
    }

    Sink &sink_;
};

inline size_t invalidUtf8Offset(std::string_view text) {
    size_t place = 0;
    while (place < text.size()) {
        place += EDA::asciiPrefix(text.substr(place));
        if (place == text.size()) break;
        const size_t size = EDA::firstCharacter(text.substr(place)).size;
        if (size == 0) return place;
        place += size;
    }
    return std::string_view::npos;
}

inline std::string messageAt(std::string_view text, size_t offset, const std::string &name,
                             const std::string &what) {
    const std::string_view before = text.substr(0, offset);
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    return name + ":" + std::to_string(line) + ": " + what;
}

inline std::string_view withoutByteOrderMark(std::string_view text) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    return text.substr(0, mark.size()) == mark ? text.substr(mark.size()) : text;
}

// Feeds the events of a text to a Sink, which is made from a function that tells the place in the text. A
// sink has take(event), false to stop, what() and errorOffset() to tell why and where, and moreAfterEnd, its
// words for a text that goes on. The result is what `finish` makes of the sink at the end of the text; false
// or null means that the sink then found something wrong. On an error the result is empty, with "name:line:
// reason" in `error`.
template <typename Sink, typename Finish>
auto readJson(std::string_view text, const std::string &name, std::string &error, Finish finish) {
    using Result = decltype(finish(std::declval<Sink &>()));
    constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag;
    error.clear();
    const auto failed = [&](size_t offset, const std::string &what) {
        error = messageAt(text, offset, name, what);
        return Result();
    };
    text = withoutByteOrderMark(text);
    const size_t bad = invalidUtf8Offset(text);
    if (bad != std::string_view::npos) return failed(bad, "the text is not UTF-8");

    JsonTextStream stream(text);
    Sink sink([&stream] { return stream.Tell(); });
    JsonHandler<Sink> handler(sink);
    rapidjson::Reader json;
    const rapidjson::ParseResult result = json.Parse<flags>(stream, handler);
    if (result.Code() == rapidjson::kParseErrorTermination) return failed(sink.errorOffset(), sink.what());
    if (result.IsError()) return failed(result.Offset(), rapidjson::GetParseError_En(result.Code()));
    // A NUL byte ends the text for the JSON reader.
    if (stream.Tell() < text.size()) return failed(stream.Tell(), Sink::moreAfterEnd);
    Result finished = finish(sink);
    return finished ? std::move(finished) : failed(sink.errorOffset(), sink.what());
}

} // namespace EntityModel

// Reads the model file.
#include "host/EntityModel/ModelFile.h"

#include "host/EntityModel/ModelReader.h"
#include "host/FileSystem/File.h"
#include "text/Encoding.h"

#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

#include <algorithm>

namespace EntityModel {

namespace {

// The text as the JSON reader takes it.
class TextStream {
public:
    using Ch = char;

    explicit TextStream(std::string_view text) : text_(text) {}

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

// Hands the JSON reader's events to the model reader.
class Events : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Events> {
public:
    explicit Events(ModelReader &reader) : reader_(reader) {}

    bool Default() { return false; }
    bool Null() { return take(JsonKind::Null); }
    bool Bool(bool value) { return reader_.take({JsonKind::Bool, {}, value}); }
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
        return reader_.take({kind, std::string_view(text, size)});
    }

    ModelReader &reader_;
};

size_t invalidUtf8Offset(std::string_view text) {
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

std::string messageAt(std::string_view text, size_t offset, const std::string &name,
                      const std::string &what) {
    const std::string_view before = text.substr(0, offset);
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    return name + ":" + std::to_string(line) + ": " + what;
}

constexpr unsigned parseFlags = rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag;

} // namespace

std::unique_ptr<Model> ModelFile::parse(std::string_view text, const std::string &name, std::string &error) {
    error.clear();
    const auto failed = [&](size_t offset, const std::string &what) -> std::unique_ptr<Model> {
        error = messageAt(text, offset, name, what);
        return nullptr;
    };
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.substr(0, byteOrderMark.size()) == byteOrderMark) text.remove_prefix(byteOrderMark.size());
    const size_t bad = invalidUtf8Offset(text);
    if (bad != std::string_view::npos) return failed(bad, "the text is not UTF-8");

    TextStream stream(text);
    ModelReader reader([&stream] { return stream.Tell(); });
    Events events(reader);
    rapidjson::Reader json;
    const rapidjson::ParseResult result = json.Parse<parseFlags>(stream, events);
    if (result.Code() == rapidjson::kParseErrorTermination)
        return failed(reader.errorOffset(), reader.what());
    if (result.IsError()) return failed(result.Offset(), rapidjson::GetParseError_En(result.Code()));
    // A NUL byte ends the text for the JSON reader.
    if (stream.Tell() < text.size()) return failed(stream.Tell(), "there is more after the end of the model");
    std::unique_ptr<Model> model = reader.finish();
    return model ? std::move(model) : failed(reader.errorOffset(), reader.what());
}

std::unique_ptr<Model> ModelFile::load(const std::string &filename, std::string &error) {
    std::string text;
    if (!FileSystem::File::readAll(filename, text, error)) return nullptr;
    return parse(text, filename, error);
}

} // namespace EntityModel

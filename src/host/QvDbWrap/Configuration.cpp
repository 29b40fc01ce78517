// Reading and writing configuration files: the mark, then the design and the step as quoted texts.
#include "host/QvDbWrap/Configuration.h"

#include "host/FileSystem/File.h"
#include "host/QvDbWrap/LayoutLine.h"
#include "host/QvDbWrap/SideFile.h"

#include <stdexcept>

namespace QvDbWrap {

namespace {

constexpr std::string_view mark = "EDA-CONFIGURATION";
constexpr int version = 1;
constexpr std::uint64_t maxSize = 1 << 20;

// The next line's text, whose keyword this is.
std::string textOf(LineWalk &lines, std::string_view keyword) {
    std::string_view line;
    if (!lines.next(line)) lines.fail("the file breaks off");
    FieldWalk fields(lines, line);
    if (fields.word("the keyword") != keyword) lines.fail("the keyword is not " + std::string(keyword));
    std::string text = fields.text("the text");
    fields.end();
    return text;
}

} // namespace

bool isConfiguration(const std::string &file) { return startsWithMark(file, mark); }

Configuration readConfiguration(const std::string &file) {
    std::string content;
    std::string error;
    if (!FileSystem::File::readAll(file, content, error, maxSize)) throw std::runtime_error(error);
    LineWalk lines(content);
    std::string_view line;
    if (!lines.next(line)) throw std::runtime_error("line 1: the file is empty");
    FieldWalk fields(lines, line);
    if (fields.word("the mark") != mark) lines.fail("this is no configuration");
    if (fields.number("the version") != version) lines.fail("the version is unknown");
    fields.end();
    Configuration configuration;
    configuration.design = textOf(lines, "design");
    configuration.step = textOf(lines, "step");
    if (lines.next(line)) lines.fail("there is more behind the step");
    return configuration;
}

void writeConfiguration(const Configuration &configuration, const std::string &file) {
    std::string text = std::string(mark) + ' ' + std::to_string(version) + "\ndesign ";
    appendQuoted(text, configuration.design);
    text += "\nstep ";
    appendQuoted(text, configuration.step);
    std::string error;
    if (!replaceSideFile(file, text + "\n", error)) throw std::runtime_error(error);
}

} // namespace QvDbWrap

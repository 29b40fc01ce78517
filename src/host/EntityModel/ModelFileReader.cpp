// Reads the model file.
#include "host/EntityModel/ModelFile.h"

#include "host/EntityModel/JsonReadingDetail.h"
#include "host/EntityModel/ModelReader.h"
#include "host/FileSystem/File.h"

namespace EntityModel {

std::unique_ptr<Model> ModelFile::parse(std::string_view text, const std::string &name, std::string &error) {
    return readJson<ModelReader>(text, name, error, [](ModelReader &reader) { return reader.finish(); });
}

std::unique_ptr<Model> ModelFile::load(const std::string &filename, std::string &error) {
    std::string text;
    if (!FileSystem::File::readAll(filename, text, error)) return nullptr;
    return parse(text, filename, error);
}

std::unique_ptr<Entity> ModelFile::parseTree(std::string_view text, const std::string &name,
                                             std::string &error) {
    return readJson<ModelReader>(text, name, error, [](ModelReader &reader) { return reader.finishTree(); });
}

std::unique_ptr<Entity> ModelFile::loadTree(const std::string &filename, std::string &error,
                                            std::uint64_t sizeLimit) {
    std::string text;
    if (!FileSystem::File::readAll(filename, text, error, sizeLimit)) return nullptr;
    return parseTree(text, filename, error);
}

} // namespace EntityModel

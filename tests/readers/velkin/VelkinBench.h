// A folder with designs, a suite, preferences and a scripted wrapper, for one test of the reader.
#pragma once

#include "LayoutText.h"
#include "ScriptedDbWrapper.h"

#include "host/EntityModel/Entity.h"
#include "host/EntityModel/Types.h"
#include "host/EntityModel/UserPreference.h"
#include "host/FileSystem/OSPaths.h"
#include "readers/VelkinEDAReader.h"
#include "support/CancelAfter.h"
#include "support/Outlines.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>

#include <QByteArray>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace VelkinTest {

// The smallest layout that counts as read.
inline const char *const smallLayout = "edge 0,0 4,0 4,3 0,3";

class VelkinBench : public testing::Test {
protected:
    VelkinBench() : before_(FileSystem::OSPaths::getCurrentDirectory()) {
        for (const char *name : {"EDA_CONFIG_DIR", "EDA_TOOLS_DIR", "QVPATH", "USE_DFA_BOUND"})
            variables_.push_back({name, qgetenv(name), qEnvironmentVariableIsSet(name)});
        script() = Script();
        script().layout = layoutOf(smallLayout);
        qputenv("EDA_CONFIG_DIR", folder.path("config").c_str());
        EntityModel::UserPreference::instance().reload();
        std::filesystem::create_directory(folder.path("suite"));
        std::filesystem::create_directory(folder.path("designs"));
        folder.write("suite/QuorvitySuite.exe", "");
        useSuite(folder.path("suite"));
    }

    ~VelkinBench() override {
        FileSystem::OSPaths::setCurrentDirectory(before_);
        for (const Variable &variable : variables_)
            variable.isSet ? qputenv(variable.name, variable.value) : qunsetenv(variable.name);
        EntityModel::UserPreference::instance().reload();
    }

    static void useSuite(const std::string &suite) {
        FileSystem::OSPaths::setEnvironment("EDA_TOOLS_DIR", suite);
    }

    std::string design(const std::string &name) const { return folder.path("designs/" + name); }
    std::string write(const std::string &name, const std::string &content = "design") const {
        return folder.write("designs/" + name, content);
    }
    bool isThere(const std::string &name) const { return std::filesystem::exists(design(name)); }

    // Reads a file, which need not exist as the wrapper is scripted, with a new reader.
    bool read(const std::string &file, bool deleteJunk = false, bool reconvert = false) {
        makeReader(deleteJunk, reconvert);
        return reader->readFile(file);
    }
    bool readDesign(const std::string &name, bool deleteJunk = false, bool reconvert = false) {
        return read(design(name), deleteJunk, reconvert);
    }

    // Reads the records of a text.
    bool convert(const char *layout) {
        script().layout = layoutOf(layout);
        return readDesign("board.brd");
    }
    EDA::EDABoard &board() { return reader->getBoard(); }

    void makeReader(bool deleteJunk = false, bool reconvert = false) {
        reader = std::make_unique<EDA::VelkinEDAReader>(deleteJunk, reconvert);
        reader->setToolProgress(progress);
        reader->setStepChooser(chooser);
    }

    const std::string &error() const { return reader->getError(); }
    std::string warnings() const {
        std::string text;
        const bool had = reader->hadWarnings(text);
        EXPECT_EQ(had, !text.empty());
        return text;
    }

    TestSupport::TempFolder folder;
    std::unique_ptr<EDA::VelkinEDAReader> reader;
    Tools::ToolProgress *progress = nullptr;
    EDA::StepChooser *chooser = nullptr;

private:
    struct Variable {
        const char *name;
        QByteArray value;
        bool isSet;
    };
    std::string before_;
    std::vector<Variable> variables_;
};

// Answers with one choice and notes what was offered.
class OneChoice : public EDA::StepChooser {
public:
    explicit OneChoice(std::optional<int> choice) : choice_(choice) {}
    std::optional<int> chooseStep(const std::vector<std::string> &steps) override {
        offered.push_back(steps);
        return choice_;
    }
    std::vector<std::vector<std::string>> offered;

private:
    std::optional<int> choice_;
};

} // namespace VelkinTest

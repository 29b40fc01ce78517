// The steps of archives, and who chooses one.
#include "VelkinBench.h"

#include <archive.h>
#include <archive_entry.h>

using namespace VelkinTest;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

using Names = std::vector<std::string>;

const Names opened = {"open design.zip 0", "close"};

Names configuredFor(const std::string &step) {
    return {"open design.zip 1", "step " + step, "configure", "close", "open Board Bench.cfg 0", "close"};
}

class VelkinSteps : public VelkinBench {
protected:
    VelkinSteps() { script().configuration = design("Board Bench.cfg"); }

    // Packs files of these names; folders end in a slash.
    void pack(const std::string &name, const Names &entries) const {
        archive *const packer = archive_write_new();
        const std::string extension = name.substr(name.find('.') + 1);
        if (extension == "zip")
            archive_write_set_format_zip(packer);
        else if (extension == "7z")
            archive_write_set_format_7zip(packer);
        else
            archive_write_set_format_pax_restricted(packer);
        if (extension == "tgz" || extension == "gz") archive_write_add_filter_gzip(packer);
        if (extension == "Z") archive_write_add_filter_compress(packer);
        ASSERT_EQ(archive_write_open_filename(packer, design(name).c_str()), ARCHIVE_OK);
        archive_entry *const entry = archive_entry_new();
        for (const std::string &path : entries) {
            archive_entry_clear(entry);
            archive_entry_set_pathname(entry, path.c_str());
            archive_entry_set_filetype(entry, path.back() == '/' ? AE_IFDIR : AE_IFREG);
            archive_entry_set_perm(entry, 0644);
            archive_entry_set_size(entry, path.back() == '/' ? 0 : 1);
            ASSERT_GE(archive_write_header(packer, entry), ARCHIVE_WARN);
            if (path.back() != '/') archive_write_data(packer, "x", 1);
        }
        archive_entry_free(entry);
        archive_write_free(packer);
    }

    bool readPacked(const Names &entries) {
        pack("design.zip", entries);
        return readDesign("design.zip");
    }

    const Names twoSteps = {"job/matrix/matrix", "job/steps/panel/profile", "job/steps/board/profile",
                            "job/steps/panel/layers/top/features"};
};

} // namespace

TEST_F(VelkinSteps, ASingleStepIsReadWithoutAskingForIt) {
    OneChoice choice(0);
    chooser = &choice;
    EXPECT_TRUE(readPacked({"job/steps/pcb/profile", "job/steps/pcb/layers/top/features"}));
    EXPECT_THAT(choice.offered, IsEmpty());
    EXPECT_EQ(script().calls, opened);
}

TEST_F(VelkinSteps, AnArchiveWithoutStepsIsLeftToTheWrapper) {
    EXPECT_TRUE(readPacked({"readme", "steps", "job/steps/", "mysteps/a/b", "Steps/a/b"}));
    EXPECT_EQ(script().calls, opened);
}

TEST_F(VelkinSteps, WithoutAChooserTheFirstInTheOrderOfNamesIsRead) {
    EXPECT_TRUE(readPacked(twoSteps));
    EXPECT_EQ(script().calls, configuredFor("board"));
    EXPECT_EQ(script().files[0], design("design.zip"));
    EXPECT_EQ(script().files[1], design("Board Bench.cfg"));
}

TEST_F(VelkinSteps, AChooserSeesThemInTheOrderOfTheArchive) {
    OneChoice choice(1);
    chooser = &choice;
    EXPECT_TRUE(readPacked({"job/steps/panel/profile", "job/steps/board/profile", "job/steps/another/profile",
                            "job/steps/panel/attrlist"}));
    EXPECT_THAT(choice.offered, ElementsAre(ElementsAre("panel", "board", "another")));
    EXPECT_EQ(script().calls, configuredFor("board"));
}

TEST_F(VelkinSteps, ACancelledChoiceLeavesTwoTextsInTheMessage) {
    OneChoice choice(std::nullopt);
    chooser = &choice;
    EXPECT_FALSE(readPacked(twoSteps));
    EXPECT_THAT(script().calls, IsEmpty());
    EXPECT_EQ(error(), "User cancelled operation.No data read from the file.");
}

TEST_F(VelkinSteps, AChoiceOutOfRangeIsACancel) {
    for (const int index : {-1, 2, 1000000000}) {
        OneChoice choice(index);
        chooser = &choice;
        EXPECT_FALSE(readPacked(twoSteps));
        EXPECT_THAT(error(), StartsWith("User cancelled operation."));
    }
    OneChoice last(1);
    chooser = &last;
    EXPECT_TRUE(readPacked(twoSteps));
}

TEST_F(VelkinSteps, TheNameBehindTheFirstTokenCalledStepsCounts) {
    EXPECT_TRUE(readPacked({"steps/one/steps/two", "a/b/steps/steps/c", "x/steps/lonely"}));
    EXPECT_EQ(script().calls, configuredFor("lonely"));
    OneChoice choice(0);
    chooser = &choice;
    EXPECT_TRUE(readDesign("design.zip"));
    EXPECT_THAT(choice.offered, ElementsAre(ElementsAre("one", "steps", "lonely")));
}

TEST_F(VelkinSteps, FoldersAloneMakeNoStep) {
    EXPECT_TRUE(readPacked({"job/steps/a/", "job/steps/b/", "job/steps/b/profile"}));
    EXPECT_EQ(script().calls, opened);
}

TEST_F(VelkinSteps, AreFoundInEveryKindOfArchive) {
    for (const char *name : {"d.zip", "d.tgz", "d.gz", "d.Z", "d.7z", "d.tar"}) {
        script().calls.clear();
        pack(name, twoSteps);
        EXPECT_TRUE(readDesign(name)) << name << ": " << error();
        EXPECT_THAT(script().calls, testing::Contains("step board")) << name;
    }
}

TEST_F(VelkinSteps, AreLookedForByTheExtensionInAnyCase) {
    pack("design.zip", twoSteps);
    std::filesystem::copy_file(design("design.zip"), design("design.ZIP"));
    std::filesystem::copy_file(design("design.zip"), design("design.xml"));
    EXPECT_TRUE(readDesign("design.ZIP"));
    EXPECT_EQ(script().calls.size(), 6u);
    script().calls.clear();
    EXPECT_TRUE(readDesign("design.xml"));
    EXPECT_THAT(script().calls, ElementsAre("open design.xml 0", "close"));
}

TEST_F(VelkinSteps, AnArchiveOfARelativeNameIsFound) {
    pack("design.zip", twoSteps);
    ASSERT_TRUE(FileSystem::OSPaths::setCurrentDirectory(folder.path()));
    EXPECT_TRUE(read("designs/design.zip"));
    EXPECT_EQ(script().calls, configuredFor("board"));
}

TEST_F(VelkinSteps, AConvertedFileBesideTheArchiveIsReadThroughTheArchivesName) {
    useSuite("");
    write("design.qvd");
    EXPECT_TRUE(readPacked(twoSteps));
    EXPECT_EQ(script().calls, configuredFor("board"));
}

TEST_F(VelkinSteps, AnArchiveThatIsDamagedIsAFailure) {
    pack("design.zip", twoSteps);
    const std::string whole = folder.read("designs/design.zip");
    for (const std::string &bytes : {std::string(), std::string("PK\3\4 and no more"), whole.substr(0, 20)}) {
        write("design.zip", bytes);
        script().calls.clear();
        EXPECT_FALSE(readDesign("design.zip"));
        EXPECT_THAT(script().calls, IsEmpty());
        EXPECT_THAT(error(), StartsWith(design("design.zip") + ": "));
        EXPECT_THAT(error(), EndsWith("No data read from the file."));
    }
}

TEST_F(VelkinSteps, AnArchiveThatIsMissingIsAFailure) {
    EXPECT_FALSE(readDesign("design.zip"));
    EXPECT_THAT(error(), HasSubstr("file does not exist"));
}

TEST_F(VelkinSteps, NamesThatLeadOutOfTheArchiveAreRefused) {
    for (const char *name : {"job/steps/../../etc/x", "/job/steps/a/b", "C:/steps/a/b"}) {
        EXPECT_FALSE(readPacked({"job/steps/a/profile", name})) << name;
        EXPECT_THAT(script().calls, IsEmpty());
    }
    EXPECT_FALSE(std::filesystem::exists(folder.path("etc")));
}

TEST_F(VelkinSteps, BackslashesSeparateTokensToo) {
    EXPECT_TRUE(readPacked({"job\\steps\\b\\profile", "job/steps/a/profile"}));
    EXPECT_EQ(script().calls, configuredFor("a"));
}

TEST_F(VelkinSteps, ManyOfThemAreListedInGoodTime) {
    Names entries;
    for (int i = 0; i < 30000; ++i)
        entries.push_back("job/steps/step" + std::to_string(i) + "/profile");
    OneChoice choice(29999);
    chooser = &choice;
    EXPECT_TRUE(readPacked(entries));
    ASSERT_EQ(choice.offered.size(), 1u);
    EXPECT_EQ(choice.offered[0].size(), 30000u);
    EXPECT_EQ(script().calls, configuredFor("step29999"));
}

TEST_F(VelkinSteps, AnExceptionWhileAStepIsConfiguredEndsInTheMessage) {
    script().onOpen = [](const std::string &, int mode) {
        if (mode == 1) throw std::runtime_error("can't configure. ");
    };
    EXPECT_FALSE(readPacked(twoSteps));
    EXPECT_THAT(script().calls, ElementsAre("open design.zip 1"));
    EXPECT_EQ(error(), "can't configure. No data read from the file.");
}

TEST_F(VelkinSteps, AnExceptionWhileAConfigurationIsReadEndsInTheMessage) {
    script().onOpen = [](const std::string &, int mode) {
        if (mode == 0) throw std::runtime_error("can't read. ");
    };
    EXPECT_FALSE(readPacked(twoSteps));
    EXPECT_THAT(script().calls, ElementsAre("open design.zip 1", "step board", "configure", "close",
                                            "open Board Bench.cfg 0"));
    EXPECT_EQ(error(), "can't read. No data read from the file.");
}

TEST_F(VelkinSteps, AChooserThatThrowsIsAFailure) {
    class Thrower : public EDA::StepChooser {
        std::optional<int> chooseStep(const Names &) override { throw 1; }
    } thrower;
    chooser = &thrower;
    EXPECT_FALSE(readPacked(twoSteps));
    EXPECT_THAT(error(), StartsWith("Unknown exception."));
}

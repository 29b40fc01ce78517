// The file formats that the tool reads: which files are of which, and how each is read.
#pragma once

#include "Design.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace EDATool {

struct FormatDef {
    const char *name;                     // "IDF"; null in the row of model files, which hold no design
    std::vector<const char *> extensions; // lower case, with the dot
    // By the file itself, or by its first bytes without byte order mark and NULs.
    bool (*recognise)(const std::string &file, std::string_view head);
    void (*read)(const std::vector<std::string> &files, const DesignSettings &settings, Design &design);
    std::unique_ptr<EDA::EDAReader> (
        *makeReader)();         // a reader with nothing read; null in the row of model files
    bool isSetOfLayers = false; // a file a layer: what else lies beside them is left out
    bool hasSteps = false;      // a file may hold several boards, of which one is read
    // Lies beside the files of other designs, as an archive of them or another form, so that a folder stands
    // for such a file only when it holds nothing else.
    bool liesBesideOthers = false;
};

// The name of the format of archives, which may hold several boards.
constexpr const char *archiveFormat = "ODB++";

// The name of the format of layers and drills.
constexpr const char *gerberFormat = "Gerber";

// In the order in which they are tried.
const std::vector<FormatDef> &formats();

// The format of a design by its name, in any case. Throws UsageFailure naming all formats.
const FormatDef &findFormat(const std::string &name);

// The names of all formats of designs, for messages.
std::string formatNames();

// IDX: see IdxDesign.cpp.
bool looksLikeIdx(const std::string &file, std::string_view head);
void readIdxDesign(const std::vector<std::string> &files, const DesignSettings &settings, Design &design);
std::unique_ptr<EDA::EDAReader> makeIdxReader();

// IDF: see IdfDesign.cpp.
bool looksLikeIdf(const std::string &file, std::string_view head);
void readIdfDesign(const std::vector<std::string> &files, const DesignSettings &settings, Design &design);
std::unique_ptr<EDA::EDAReader> makeIdfReader();

// XFL: see XflDesign.cpp.
bool looksLikeXfl(const std::string &file, std::string_view head);
void readXflDesign(const std::vector<std::string> &files, const DesignSettings &settings, Design &design);
std::unique_ptr<EDA::EDAReader> makeXflReader();

// IPC-2581, QVD, Brisko, ODB++: see SuiteFormats.cpp and SuiteDesign.cpp.
bool looksLikeIpc(const std::string &file, std::string_view head);
bool looksLikeLayout(const std::string &file, std::string_view head);
bool looksLikeBrisko(const std::string &file, std::string_view head);
bool looksLikeArchive(const std::string &file, std::string_view head);
void readSuiteDesign(const std::vector<std::string> &files, const DesignSettings &settings, Design &design);
std::unique_ptr<EDA::EDAReader> makeSuiteReader();

// Gerber: see GerberDesign.cpp for files that are read as they are, and FabricationDesign.h for all others.
bool looksLikeGerber(const std::string &file, std::string_view head);
void readGerberDesign(const std::vector<std::string> &files, const DesignSettings &settings, Design &design);
std::unique_ptr<EDA::EDAReader> makeGerberReader();

} // namespace EDATool

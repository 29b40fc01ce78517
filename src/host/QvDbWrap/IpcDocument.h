// Reads an IPC-2581 document (revisions A, B and C) into a layout.
#pragma once

#include "host/QvDbWrap/Records.h"

#include <string>
#include <vector>

namespace QvDbWrap {

class IpcXml;
class WrapperLog;

struct IpcSettings {
    std::string step;           // empty: the document's first StepRef, else its first board step
    bool useCourtyards = false; // a package's courtyard, where it has one, in place of its body
};

// Whether a document starts as an IPC-2581 one: its root element's name.
bool isIpcDocument(const std::string &file);

// Throws std::runtime_error with the place and reason when the document can't be read, has no step, or not
// the one of the settings. Whatever is skipped is told to the log.
Layout readIpcDocument(IpcXml &xml, const IpcSettings &settings, WrapperLog &log);

// The names of the document's steps, in order; of a file that is no IPC-2581 document none. Throws as above.
std::vector<std::string> stepsOfIpcDocument(const std::string &file);

} // namespace QvDbWrap

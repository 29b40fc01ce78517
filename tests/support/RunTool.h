// Runs the built command line tool as a process.
#pragma once

#include "support/TempFolder.h"

#include <QtCore/QProcess>

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace TestSupport {

struct ToolResult {
    int status = -1; // -1: it crashed or did not end in time
    std::string out;
    std::string err;
};

// For the message of a failed check.
inline std::ostream &operator<<(std::ostream &stream, const ToolResult &result) {
    return stream << "status " << result.status << "\nstdout:\n" << result.out << "\nstderr:\n" << result.err;
}

// Runs a program to its end.
inline ToolResult runProgram(const std::string &program, const std::vector<std::string> &arguments,
                             const QProcessEnvironment &environment,
                             const std::string &workingFolder = std::string()) {
    constexpr int timeout = 100'000; // milliseconds, also for a sanitized build on a busy machine
    QStringList texts;
    for (const std::string &argument : arguments)
        texts << QString::fromStdString(argument);
    QProcess process;
    process.setProcessEnvironment(environment);
    if (!workingFolder.empty()) process.setWorkingDirectory(QString::fromStdString(workingFolder));
    process.start(QString::fromStdString(program), texts);
    ToolResult result;
    if (!process.waitForFinished(timeout)) {
        process.kill();
        process.waitForFinished();
    } else if (process.exitStatus() == QProcess::NormalExit) {
        result.status = process.exitCode();
    }
    result.out = process.readAllStandardOutput().toStdString();
    result.err = process.readAllStandardError().toStdString();
    return result;
}

// What the tool is run with: no user preferences but those in `configFolder`, and the materials and the type
// map of the source tree unless another folder of shared files is named.
inline QProcessEnvironment toolEnvironment(const std::string &configFolder = "/nonexistent",
                                           const std::string &sharedFolder = EDA_TEST_DATA
                                           "/../../share/eda") {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("EDA_CONFIG_DIR", QString::fromStdString(configFolder));
    environment.insert("EDA_SHARE_DIR", QString::fromStdString(sharedFolder));
    // Whole stacks, so that what the toolkit leaks is known by its name. Without sanitizers nobody reads
    // this.
    environment.insert("LSAN_OPTIONS",
                       "fast_unwind_on_malloc=0:print_suppressions=0:suppressions=" EDA_TEST_DATA
                       "/../support/lsan.supp");
    return environment;
}

// Runs the tool of EDA_TOOL to its end.
inline ToolResult runTool(const std::vector<std::string> &arguments,
                          const std::string &configFolder = "/nonexistent",
                          const std::string &workingFolder = std::string(),
                          const std::string &sharedFolder = EDA_TEST_DATA "/../../share/eda") {
    return runProgram(EDA_TOOL, arguments, toolEnvironment(configFolder, sharedFolder), workingFolder);
}

} // namespace TestSupport

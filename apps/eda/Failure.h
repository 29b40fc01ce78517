// How a command ends other than well.
#pragma once

#include <stdexcept>
#include <string>

namespace EDATool {

// What the process answers. Scripts rely on the numbers.
enum class Status {
    Done = 0,
    Failed = 1,   // the design could not be read, imported or written
    Usage = 2,    // the command line makes no sense
    Cancelled = 3 // by Ctrl-C
};

// Ends the command. The message is one line for the user, without a line feed, and names the file or the
// argument that it is about; main() prints it.
class Failure : public std::runtime_error {
public:
    Failure(Status status, const std::string &message) : std::runtime_error(message), status_(status) {}
    Status status() const { return status_; }

private:
    Status status_;
};

// The design, the model or an output file is the trouble.
class DesignFailure : public Failure {
public:
    explicit DesignFailure(const std::string &message) : Failure(Status::Failed, message) {}
};

// The command line is the trouble.
class UsageFailure : public Failure {
public:
    explicit UsageFailure(const std::string &message) : Failure(Status::Usage, message) {}
};

} // namespace EDATool

// A tool of a drill file.
#pragma once

namespace EDA {

class DrillTool {
public:
    DrillTool() = default;
    DrillTool(const DrillTool &) = default;
    DrillTool &operator=(const DrillTool &) = default;
    virtual ~DrillTool() = default;

    // Hole diameter in the file's units.
    void setSize(double size) { size_ = size; }
    double getSize() const { return size_; }

    void setPlated(bool plated) { plated_ = plated; }
    bool isPlated() const { return plated_; }

private:
    double size_ = 0.0;
    bool plated_ = false;
};

} // namespace EDA

// A named group of traces on one layer.
#pragma once

#include "model/EDATrace.h"
#include "model/KeyWatch.h"

#include <cstddef>
#include <string>
#include <vector>

namespace EDA {

// The traces of one layer that are connected, with the ids that the source gave the net.
class EDANet {
public:
    using TraceIterator = std::vector<EDATrace>::const_iterator;

    EDANet();
    EDANet(EDANet const &);
    EDANet(EDANet &&) noexcept;
    EDANet &operator=(EDANet const &);
    EDANet &operator=(EDANet &&) noexcept;
    virtual ~EDANet();

    void setGlobalId(int const &id) { globalId_ = id; }
    int const &getGlobalId() const { return globalId_; }

    void setLocalId(int const &id) { localId_ = id; }
    int const &getLocalId() const { return localId_; }

    // Renaming a net that a layer holds does not move it; the layer sorts at its next `addNet`.
    void setName(std::string const &name) {
        name_ = name;
        keyWatch_.keyChanged();
    }
    std::string const &getName() const { return name_; }

    // Appends a copy and returns a pointer to it, valid until the next addition. The argument
    // is not changed.
    EDATrace *addTrace(EDATrace &trace);
    EDATrace *addTrace(EDATrace &&trace);
    std::size_t numTraces() const { return traces_.size(); }
    TraceIterator beginTraces() const { return traces_.begin(); }
    TraceIterator endTraces() const { return traces_.end(); }

    // For look-up tables: from now on, count changes of the name.
    void watchKey() const { keyWatch_.watch(); }

private:
    int globalId_ = 0;
    int localId_ = 0;
    std::string name_;
    std::vector<EDATrace> traces_;
    KeyWatch keyWatch_;
};

} // namespace EDA

// Nets: copying and adding traces.
#include "model/EDANet.h"

#include <utility>

namespace EDA {

EDANet::EDANet() = default;
EDANet::EDANet(EDANet const &) = default;
EDANet::EDANet(EDANet &&) noexcept = default;
EDANet &EDANet::operator=(EDANet const &) = default;
EDANet &EDANet::operator=(EDANet &&) noexcept = default;
EDANet::~EDANet() = default;

EDATrace *EDANet::addTrace(EDATrace &trace) {
    traces_.push_back(trace);
    return &traces_.back();
}

EDATrace *EDANet::addTrace(EDATrace &&trace) {
    traces_.push_back(std::move(trace));
    return &traces_.back();
}

} // namespace EDA

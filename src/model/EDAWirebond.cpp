// Bond wires: copying.
#include "model/EDAWirebond.h"

namespace EDA {

EDAWirebond::EDAWirebond() = default;
EDAWirebond::EDAWirebond(EDAWirebond const &) = default;
EDAWirebond::EDAWirebond(EDAWirebond &&) noexcept = default;
EDAWirebond &EDAWirebond::operator=(EDAWirebond const &) = default;
EDAWirebond &EDAWirebond::operator=(EDAWirebond &&) noexcept = default;
EDAWirebond::~EDAWirebond() = default;

} // namespace EDA

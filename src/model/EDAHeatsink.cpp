// Heatsinks: copying.
#include "model/EDAHeatsink.h"

namespace EDA {

EDAHeatsink::EDAHeatsink() = default;
EDAHeatsink::EDAHeatsink(EDAHeatsink const &) = default;
EDAHeatsink::EDAHeatsink(EDAHeatsink &&) noexcept = default;
EDAHeatsink &EDAHeatsink::operator=(EDAHeatsink const &) = default;
EDAHeatsink &EDAHeatsink::operator=(EDAHeatsink &&) noexcept = default;
EDAHeatsink::~EDAHeatsink() = default;

} // namespace EDA

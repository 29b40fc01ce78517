// Puts together what a step of an IPC-2581 document draws on a layer of copper.
#pragma once

#include "host/QvDbWrap/IpcDesign.h"
#include "host/QvDbWrap/IpcStackup.h"

#include <string>
#include <vector>

namespace QvDbWrap {

// Adds the pads that waited for their stacks. Then takes from each shape the negative ones that were drawn
// later and drops these. On a negative layer all is the other way round, and a full plane of the step's
// profile comes first.
void settleCopper(IpcCopper &copper, const std::string &layerName, bool isNegativeLayer, const IpcStep &step,
                  IpcContext &context);

} // namespace QvDbWrap

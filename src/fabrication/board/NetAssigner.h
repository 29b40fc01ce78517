// Nets of a layer from the places where copper of nets lies.
#pragma once

#include "fabrication/layers/LayerWriter.h"
#include "fabrication/Notes.h"
#include "model/EDABoardLayer.h"

namespace EDA::Fabrication {

// Moves each loose trace on which copper of a net lies into the EDANet of that name, which is made where
// there is none; traces of no net, or of the net "N/C", which stands for none, stay loose, in their order.
// Works on united conductors and on single ones. A trace on which copper of several nets lies goes to the net
// with the most places and is told, and so are places on no trace. Lengths of the places times `scale`. About
// n log n in places and vertices.
void assignNets(EDABoardLayer &layer, NetPoints const &nets, double scale, Notes &notes);

} // namespace EDA::Fabrication

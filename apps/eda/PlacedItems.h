// Copies of a board's items, scaled and moved.
#pragma once

#include "CopperOnBoard.h"

namespace EDATool {

// Points, arc centres and internal outlines. Heights are scaled as well.
EDA::EDAOutline placedOutline(const EDA::EDAOutline &outline, const CopperPlace &place);

EDA::EDATrace placedTrace(const EDA::EDATrace &trace, const CopperPlace &place);

// With all loose traces and nets, thickness and offset.
EDA::EDABoardLayer placedLayer(const EDA::EDABoardLayer &layer, const CopperPlace &place);

// The hole alone, at its own centre, without its instances.
EDA::EDAVia placedVia(const EDA::EDAVia &via, const CopperPlace &place);

} // namespace EDATool

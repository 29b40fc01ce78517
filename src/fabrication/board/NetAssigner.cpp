// Nets of a layer from the places where copper of nets lies.
#include "fabrication/board/NetAssigner.h"

#include "fabrication/board/CopperPlaces.h"

#include <algorithm>
#include <cstdint>
#include <tuple>
#include <utility>

namespace EDA::Fabrication {

namespace {

// The published name of what is connected to nothing: pieces that have it are no net.
constexpr char const *notConnected = "N/C";

// That copper of a net lies on a trace.
struct Vote {
    std::size_t trace;
    std::uint32_t net;
};

bool isNet(NetPoints const &nets, NetPoint const &point) {
    return point.net < nets.names.size() && !nets.names[point.net].empty() &&
           nets.names[point.net] != notConnected;
}

// Strokes begin where others end: each place of a net is looked up once.
std::vector<NetPoint> differentPlaces(NetPoints const &nets) {
    std::vector<NetPoint> points;
    for (NetPoint const &point : nets.points) {
        if (isNet(nets, point)) points.push_back(point);
    }
    auto const key = [](NetPoint const &point) { return std::tie(point.net, point.at.x, point.at.y); };
    std::sort(points.begin(), points.end(),
              [&key](NetPoint const &a, NetPoint const &b) { return key(a) < key(b); });
    points.erase(std::unique(points.begin(), points.end(),
                             [&key](NetPoint const &a, NetPoint const &b) { return key(a) == key(b); }),
                 points.end());
    return points;
}

std::vector<Vote> gatherVotes(std::vector<EDATrace> const &traces, NetPoints const &nets, double scale,
                              Notes &notes) {
    std::vector<EDATrace const *> pointers;
    pointers.reserve(traces.size());
    for (EDATrace const &trace : traces)
        pointers.push_back(&trace);
    CopperPlaces places(std::move(pointers));
    std::vector<Vote> votes;
    std::size_t numBare = 0;
    std::size_t numLeft = 0;
    for (NetPoint const &point : differentPlaces(nets)) {
        if (places.isSpent()) {
            ++numLeft;
            continue;
        }
        std::size_t const before = votes.size();
        places.forEachAt(scale * point.at.x, scale * point.at.y, [&](std::size_t trace) {
            votes.push_back({trace, point.net});
        });
        if (votes.size() == before) ++numBare;
    }
    notes.add(NoteKind::LeftOut, "places of nets where no copper lies", 0, numBare);
    notes.add(NoteKind::LeftOut, "places of nets that were not looked up, since too much copper overlaps", 0,
              numLeft);
    return votes;
}

constexpr std::uint32_t noNet = UINT32_MAX;

// For each trace the net with the most places on it, of those with as many the first.
std::vector<std::uint32_t> settle(std::vector<Vote> votes, std::size_t numTraces, Notes &notes) {
    std::sort(votes.begin(), votes.end(), [](Vote const &a, Vote const &b) {
        return std::tie(a.trace, a.net) < std::tie(b.trace, b.net);
    });
    std::vector<std::uint32_t> netOf(numTraces, noNet);
    std::size_t numShared = 0;
    for (std::size_t begin = 0; begin < votes.size();) {
        std::size_t const trace = votes[begin].trace;
        std::size_t most = 0;
        bool isShared = false;
        while (begin < votes.size() && votes[begin].trace == trace) {
            std::uint32_t const net = votes[begin].net;
            std::size_t const first = begin;
            while (begin < votes.size() && votes[begin].trace == trace && votes[begin].net == net)
                ++begin;
            isShared |= most > 0;
            if (begin - first <= most) continue;
            most = begin - first;
            netOf[trace] = net;
        }
        if (isShared) ++numShared;
    }
    notes.add(NoteKind::Guessed,
              "pieces of copper on which several nets lie, given to the net with the most places", 0,
              numShared);
    return netOf;
}

// Existing nets take the traces; the others are made.
void addToNet(std::string const &name, std::vector<EDATrace *> const &traces, EDABoardLayer &layer) {
    EDANet made;
    EDANet *const known = layer.findNet(name);
    EDANet &net = known != nullptr ? *known : made;
    net.setName(name);
    for (EDATrace *const trace : traces)
        net.addTrace(std::move(*trace));
    if (known == nullptr) layer.addNet(std::move(made));
}

} // namespace

void assignNets(EDABoardLayer &layer, NetPoints const &nets, double scale, Notes &notes) {
    if (nets.points.empty() || layer.numTraces() == 0) return;
    std::vector<EDATrace> traces = layer.takeTraces();
    std::vector<std::uint32_t> const netOf =
        settle(gatherVotes(traces, nets, scale, notes), traces.size(), notes);
    std::vector<std::vector<EDATrace *>> tracesOf(nets.names.size());
    layer.reserveTraces(static_cast<std::size_t>(std::count(netOf.begin(), netOf.end(), noNet)));
    for (std::size_t i = 0; i < traces.size(); ++i) {
        if (netOf[i] == noNet) {
            layer.addTrace(std::move(traces[i]));
        } else {
            tracesOf[netOf[i]].push_back(&traces[i]);
        }
    }
    for (std::size_t net = 0; net < tracesOf.size(); ++net) {
        if (!tracesOf[net].empty()) addToNet(nets.names[net], tracesOf[net], layer);
    }
}

} // namespace EDA::Fabrication

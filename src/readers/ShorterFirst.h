// An order of texts that is quick to tell.
#pragma once

#include <QString>

#include <cstddef>
#include <cstring>

namespace EDA {

// By length, then by content. For tables whose keys come from a document: no hash, as whoever writes the
// document could choose keys that share one.
struct ShorterFirst {
    bool operator()(const QString &a, const QString &b) const {
        if (a.size() != b.size()) return a.size() < b.size();
        return std::memcmp(a.constData(), b.constData(), sizeof(QChar) * std::size_t(a.size())) < 0;
    }
};

} // namespace EDA

// The file of an IDX document: its namespaces, and bringing it to the disk.
#include "writers/IDXDocumentDetail.h"

#include "host/FileSystem/AtomicFile.h"

#include <QDomDocument>
#include <QIODevice>
#include <QTextStream>

namespace EDA {

namespace {

// The host under which the format's namespaces are published. Readers compare nothing of it.
constexpr char const *edmdHost = "http://www.prostep.org";
constexpr char const *w3Host = "http://www.w3.org";

struct Namespace {
    char const *prefix;
    char const *host;
    char const *path;
};

constexpr Namespace namespaces[] = {
    {"external", edmdHost, "/ecad-mcad/edmd/2.0/external"},
    {"material", edmdHost, "/ecad-mcad/edmd/2.0/material"},
    {"d2", edmdHost, "/ecad-mcad/edmd/2.0/geometry.d2"},
    {"annotation", edmdHost, "/ecad-mcad/edmd/2.0/annotation"},
    {"pdm", edmdHost, "/ecad-mcad/edmd/2.0/pdm"},
    {"idx", edmdHost, "/edmd/1.0/idx"},
    {"grouping", edmdHost, "/ecad-mcad/edmd/2.0/grouping"},
    {"computational", edmdHost, "/ecad-mcad/edmd/2.0/computational"},
    {"xsi", w3Host, "/2001/XMLSchema-instance"},
    {"xsd", w3Host, "/2001/XMLSchema"},
    {"property", edmdHost, "/ecad-mcad/edmd/2.0/property"},
    {"administration", edmdHost, "/ecad-mcad/edmd/2.0/administration"},
    {"foundation", edmdHost, "/ecad-mcad/edmd/2.0/foundation"},
};

QByteArray namespaceAttributes() {
    QByteArray text;
    for (Namespace const &space : namespaces)
        text.append(" xmlns:")
            .append(space.prefix)
            .append("=\"")
            .append(space.host)
            .append(space.path)
            .append('"');
    return text;
}

// Passes bytes on to a file that appears whole or not at all, and puts the namespaces into the root's tag,
// the first of its name. The toolkit would write them in another order in each run of a program.
class DocumentDevice : public QIODevice {
public:
    explicit DocumentDevice(FileSystem::AtomicFile &file) : file_(file) { open(QIODevice::WriteOnly); }
    bool isComplete() const { return hasRoot_; }

protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(char const *data, qint64 size) override {
        QByteArray text(data, static_cast<int>(size));
        static QByteArray const rootStart = QByteArray("<") + idxRootTag;
        int const root = hasRoot_ ? -1 : text.indexOf(rootStart);
        if (root >= 0) text.insert(root + rootStart.size(), namespaceAttributes());
        hasRoot_ = hasRoot_ || root >= 0;
        file_.stream().write(text.constData(), text.size());
        return file_.stream() ? size : -1;
    }

private:
    FileSystem::AtomicFile &file_;
    bool hasRoot_ = false;
};

} // namespace

bool saveIdxDocument(QDomDocument const &document, std::string const &filename) {
    FileSystem::AtomicFile file(filename);
    if (!file.isOpen()) return false;
    DocumentDevice device(file);
    QTextStream stream(&device);
    stream.setCodec("UTF-8");
    document.save(stream, 2, QDomNode::EncodingFromTextStream);
    stream.flush();
    return device.isComplete() && stream.status() == QTextStream::Ok && file.commit();
}

} // namespace EDA

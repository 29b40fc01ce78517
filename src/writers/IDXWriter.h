// Writes a board as an IDX document.
#pragma once

#include "model/EDABoard.h"

#include <QString>

#include <memory>
#include <string>

class QDomDocument;
class QDomElement;

namespace EDA {

// The document is a baseline: it states the whole design. `IDXReader` reads it back.
//
//     IDXWriter writer;
//     if (!writer.writeFile("board.idx", board)) ...
//
// What a caller should know:
// - All lengths are in the board's units. Those of a component with other units are converted where both are
//   known, and otherwise stand as they are. Numbers have 15 significant digits, the parts of a turn six.
// - Arcs become straight segments, but an outline that is a circle stays one.
// - A via is written as round, of its diameter and at its own place. Its instances are left out: a caller who
//   wants them makes vias of their own first.
// - A placement without a component is left out, and so are layers, bumps, wirebonds, route and placement
//   outlines, cut-outs of anything but the board, mounting offsets, statuses, and the type of a component.
// - A placement on the bottom that has an orientation is written by the angle that it reads as there, and not
//   by the one that it would have without: each generation of such documents turns it the other way.
// - Characters that no XML document may hold are dropped from texts. A text of blanks alone reads as empty.
class IDXWriter {
public:
    IDXWriter();
    // A copy starts without a document, as each writing does.
    IDXWriter(IDXWriter const &);
    IDXWriter &operator=(IDXWriter const &);
    virtual ~IDXWriter();

    // False when the name is empty or the file could not be written, which then stays as it was.
    bool writeFile(std::string const &filename, EDABoard const &board);

private:
    void addHeader(QDomElement &root);
    void addBody(QDomElement &root, EDABoard const &board);
    void addSystemAndUnits(QDomElement &body, EDABoard const &board);
    void addBoard(QDomElement &body, EDABoard const &board);
    void addComponent(QDomElement &body, EDAComponent const &component, EDABoard const &board);
    void addComponentPlacement(QDomElement &body, EDAComponentPlacement const &placement,
                               EDABoard const &board);
    void addKeepOut(QDomElement &body, EDAKeepout const &keepout, EDABoard const &board);
    void addVia(QDomElement &body, EDAVia const &via, EDABoard const &board);

    // What elements are made of. Each adds to the element that it is given.
    void addTransform(QDomElement &instance, double x, double y, double angle, bool bottom);
    void addPoint(QDomElement &parent, QString const &id, double x, double y);
    void addProperty(QDomElement &parent, QString const &key, QString const &value);
    void addIdentifier(QDomElement &parent, QString const &number);
    void addBasline(QDomElement &item);
    QString addShapeElement(QDomElement &parent, QString const &name, QString const &type,
                            EDAOutline const &outline, double height, bool inverted);
    QString addShapeElementOf(QDomElement &parent, QString const &name, QString const &type,
                              QString const &curve, double height, bool inverted);
    QString addCurve(QDomElement &parent, QString const &name, EDAOutline const &outline);
    QString addCircle(QDomElement &parent, QString const &name, double x, double y, double diameter);
    QString addPolyLine(QDomElement &parent, QString const &name, EDAOutline const &outline, bool closed);
    QDomElement addItem(QDomElement &parent, QString const &id, QString const &shape);
    QDomElement addAssemblyItem(QDomElement &parent, QString const &id);
    QDomElement addAssemblyInstance(QDomElement &assembly, QString const &id, QString const &name,
                                    QString const &item);
    QDomElement addElement(QDomElement &parent, char const *tag);
    QDomElement addIdentified(QDomElement &parent, char const *tag, QString const &id);
    void addText(QDomElement &parent, char const *tag, QString const &text);
    void addValue(QDomElement &parent, char const *tag, QString const &value);
    void addScopedName(QDomElement &parent, char const *nameTag, QString const &name);

    std::unique_ptr<QDomDocument> document_; // only while a file is written
    QString systemScope_ = QStringLiteral("THERMAL_SYSTEM");
};

} // namespace EDA

// What comes before the first element of an XML document.
#pragma once

namespace QvDbWrap {

// Finds a document type declaration before the parser does. It may declare entities that grow and attributes
// that each element gets without having them, and the parser takes all of that in before it tells.
class IpcProlog {
public:
    static constexpr const char *documentTypeFound =
        "a document type declaration (DOCTYPE), which no IPC-2581 document has";
    static constexpr char noMarkup = 'x';

    // The next character of the document; noMarkup for one of more than 8 bits.
    void add(char c);

    // Whether what comes next is no longer of interest.
    bool isOver() const { return state_ == State::Over || hasDocumentType(); }
    bool hasDocumentType() const { return state_ == State::DocumentType; }

private:
    enum class State { Outside, Opened, Declared, Comment, Instruction, Over, DocumentType };

    State stateAfterOpening(char c) const;

    State state_ = State::Outside;
    int numEndings_ = 0; // hyphens or question marks in a row that may end what is open
};

} // namespace QvDbWrap

// What comes before the first element of an XML document.
#include "host/QvDbWrap/IpcProlog.h"

namespace QvDbWrap {

void IpcProlog::add(char c) {
    switch (state_) {
    case State::Outside:
        if (c == '<') state_ = State::Opened;
        break;
    case State::Opened:
    case State::Declared:
        state_ = stateAfterOpening(c);
        numEndings_ = 0;
        break;
    case State::Comment:
    case State::Instruction: {
        const bool isComment = state_ == State::Comment;
        if (c == '>' && numEndings_ >= (isComment ? 2 : 1)) state_ = State::Outside;
        numEndings_ = c == (isComment ? '-' : '?') ? numEndings_ + 1 : 0;
        break;
    }
    case State::Over:
    case State::DocumentType:
        break;
    }
}

// After "<" or "<!".
IpcProlog::State IpcProlog::stateAfterOpening(char c) const {
    if (state_ == State::Declared) {
        if (c == 'D') return State::DocumentType;
        return c == '-' ? State::Comment : State::Over;
    }
    if (c == '!') return State::Declared;
    return c == '?' ? State::Instruction : State::Over;
}

} // namespace QvDbWrap

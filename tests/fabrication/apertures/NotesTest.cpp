// Notes of the front end.
#include "fabrication/Notes.h"

#include <gmock/gmock.h>

namespace {

using namespace EDA::Fabrication;

TEST(FabricationNotes, OneKindIsOneNoteWithItsFirstLineAndItsNumber) {
    Notes notes;
    notes.add(NoteKind::Normalised, "modal coordinates", 12);
    notes.add(NoteKind::Normalised, "modal coordinates", 40, 3);
    ASSERT_EQ(notes.list().size(), 1u);
    EXPECT_EQ(notes.list()[0].line, 12u);
    EXPECT_EQ(notes.list()[0].count, 4u);
}

TEST(FabricationNotes, BeyondTheirNumberTheRestIsCounted) {
    Notes notes;
    for (int i = 0; i < 1005; ++i)
        notes.add(NoteKind::LeftOut, "kind " + std::to_string(i));
    ASSERT_EQ(notes.list().size(), Notes::maxNotes + 1);
    EXPECT_EQ(notes.list().back().count, 5u);
}

} // namespace

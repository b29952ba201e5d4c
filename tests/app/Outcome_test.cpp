#include "app/Outcome.h"

#include <gtest/gtest.h>

namespace kesto {
namespace {

TEST(Outcome, DefaultIsDoneWithoutACode) {
    const Outcome outcome;
    EXPECT_TRUE(outcome.Ok());
    EXPECT_EQ(outcome.Code(), error::kNone);
    EXPECT_EQ(outcome, Outcome::Done());
}

TEST(Outcome, FailureCarriesItsCode) {
    const Outcome outcome = Outcome::Failed(error::kJobFileMissing);
    EXPECT_FALSE(outcome.Ok());
    EXPECT_EQ(outcome.Code(), 9010);
}

TEST(Outcome, FailureMayLeaveNoCode) {
    const Outcome outcome = Outcome::Failed();
    EXPECT_FALSE(outcome.Ok());
    EXPECT_EQ(outcome.Code(), error::kNone);
}

TEST(Outcome, SuccessMayLeaveACode) {
    const Outcome outcome = Outcome::Done(error::kOutlineUnreadable);
    EXPECT_TRUE(outcome.Ok());
    EXPECT_EQ(outcome.Code(), 9026);
}

TEST(Outcome, OutcomesAreEqualInBothSuccessAndCode) {
    EXPECT_EQ(Outcome::Failed(9021), Outcome::Failed(9021));
    EXPECT_NE(Outcome::Failed(9021), Outcome::Failed(9022));
    EXPECT_NE(Outcome::Failed(9026), Outcome::Done(9026));
    EXPECT_NE(Outcome::Failed(), Outcome::Done());
}

TEST(LatestErrorCode, StartsWithoutACode) {
    EXPECT_EQ(LatestErrorCode().Code(), error::kNone);
}

TEST(LatestErrorCode, NoteTellsWhetherTheOperationDidItsWork) {
    LatestErrorCode errors;
    EXPECT_TRUE(errors.Note(Outcome::Done()));
    EXPECT_TRUE(errors.Note(Outcome::Done(9026)));
    EXPECT_FALSE(errors.Note(Outcome::Failed()));
    EXPECT_FALSE(errors.Note(Outcome::Failed(9023)));
}

TEST(LatestErrorCode, ALaterCodeReplacesAnEarlierOne) {
    LatestErrorCode errors;
    errors.Note(Outcome::Done(9026));
    EXPECT_EQ(errors.Code(), 9026);
    errors.Note(Outcome::Failed(9015));
    EXPECT_EQ(errors.Code(), 9015);
}

TEST(LatestErrorCode, AnOutcomeWithoutACodeKeepsTheEarlierOne) {
    LatestErrorCode errors;
    errors.Note(Outcome::Failed(9021));
    errors.Note(Outcome::Failed());
    errors.Note(Outcome::Done());
    EXPECT_EQ(errors.Code(), 9021);
}

TEST(LatestErrorCode, ACodeNotedAsOfAnEarlierMomentStandsWhileNoneCameSince) {
    LatestErrorCode errors;
    errors.Note(Outcome::Done(9021));
    const uint32_t atRead = errors.Left();
    errors.Note(Outcome::Done());
    EXPECT_TRUE(errors.NoteAsOf(Outcome::Done(9026), atRead));
    EXPECT_EQ(errors.Code(), 9026);
    EXPECT_EQ(errors.Left(), atRead + 1);
}

TEST(LatestErrorCode, ACodeNotedAsOfAnEarlierMomentYieldsToOneLeftSince) {
    LatestErrorCode errors;
    const uint32_t atRead = errors.Left();
    errors.Note(Outcome::Failed(9015));
    EXPECT_TRUE(errors.NoteAsOf(Outcome::Done(9026), atRead));
    EXPECT_FALSE(errors.NoteAsOf(Outcome::Failed(9026), atRead));
    EXPECT_EQ(errors.Code(), 9015);
}

}  // namespace
}  // namespace kesto

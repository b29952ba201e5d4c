// A snapshot gives back the job it was taken of: the same files, every link into the records
// it makes, the small boxes' flags and the block table as they were, the selection by
// position; the job's settings and run it leaves alone.
#include "history/JobSnapshot.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <memory>
#include <set>

#include "common/UndoFixture.h"

namespace kesto::test {
namespace {

// Every link of app points into app's own lists, and none into `old`'s.
void ExpectLinksInto(CKestoApp& app, const CKestoApp& old) {
    std::set<const void*> parts;
    std::set<const void*> pallets;
    std::set<const void*> oldRecords;
    for (const PartsInfo& p : app.PartsList)
        parts.insert(&p);
    for (const PalletInfo& p : app.PalletList)
        pallets.insert(&p);
    for (const PartsInfo& p : old.PartsList)
        oldRecords.insert(&p);
    for (const PalletInfo& p : old.PalletList)
        oldRecords.insert(&p);
    for (const HaichiInfo& h : app.HaichiList) {
        EXPECT_EQ(parts.count(h.Part), 1u);
        EXPECT_EQ(oldRecords.count(h.Part), 0u);
    }
    for (const BlockInfo& b : app.Blocks.Entries()) {
        if (b.Occupant != kNoOccupant) {
            EXPECT_TRUE(std::any_of(app.PartsList.begin(), app.PartsList.end(),
                                    [&](const PartsInfo& p) { return p.Seq == b.Occupant; }));
        }
    }
    for (const KouteiInfo& k : app.KouteiList) {
        if (k.Pallet != nullptr) {
            EXPECT_EQ(pallets.count(k.Pallet), 1u);
            EXPECT_EQ(oldRecords.count(k.Pallet), 0u);
        }
    }
}

// The job's settings and its run are not records: a restore leaves the Direct mode the
// operator chose since, the exit parameter and the end as they are.
TEST(JobSnapshotTest, SettingsAndRunStayAsTheyAre) {
    PlacedJob job(SmallJobShape());
    ASSERT_TRUE(job.Started());
    CKestoApp& app = job.App();
    app.Settings.IsDirect = 0;
    const JobSnapshot snap = JobSnapshot::Take(app);
    app.Settings.IsDirect = 1;
    app.Settings.PalletPrefix = "PX";
    app.Run.ExitParam = 12;
    app.Run.DialogEnd = OkCancel::Ok;
    snap.Restore(app);
    EXPECT_EQ(app.Settings.IsDirect, 1);
    EXPECT_EQ(app.Settings.PalletPrefix, "PX");
    EXPECT_EQ(app.Run.ExitParam, 12);
    EXPECT_EQ(app.Run.DialogEnd, OkCancel::Ok);
}

size_t Occupied(const CKestoApp& app) {
    size_t n = 0;
    for (const BlockInfo& b : app.Blocks.Entries())
        n += b.Occupant != kNoOccupant ? 1 : 0;
    return n;
}

TEST(JobSnapshotTest, RestoredJobWritesTheSameFilesAndLinksIntoItsOwnRecords) {
    PlacedJob job(MediumJobShape());
    ASSERT_TRUE(job.Started());
    ASSERT_FALSE(job.App().HaichiList.Empty());
    ASSERT_GT(Occupied(job.App()), 0u);
    const JobFiles before = job.Files();
    const JobSnapshot snap = JobSnapshot::Take(job.App());

    // Restored into another application object of the same settings while the first still
    // lives, then the first freed: the copy must stand on its own.
    auto copy = std::make_unique<CKestoApp>();
    copy->Settings = job.App().Settings;
    copy->Run = job.App().Run;
    snap.Restore(*copy);
    ExpectLinksInto(*copy, job.App());
    EXPECT_EQ(copy->HaichiList.size(), job.App().HaichiList.size());
    EXPECT_EQ(Occupied(*copy), Occupied(job.App()));
    job.App().FreeJob();
    TempFolder out;
    EXPECT_EQ(WriteJobFiles(*copy, job.Svc().Get(), out), before);

    // Restored over the freed job itself.
    snap.Restore(job.App());
    EXPECT_EQ(job.Files(), before);
}

TEST(JobSnapshotTest, CountsBoxFlagsAndBlockTableComeBack) {
    PlacedJob job(SmallJobShape());
    ASSERT_TRUE(job.Started());
    CKestoApp& app = job.App();
    // Counts that are not the sizes of their lists, and flags set away from their defaults.
    app.HaichiList.Count += 7;
    app.BoxList.Count += 2;
    app.BoxFlags[42] = 3;
    const size_t tableSize = app.Blocks.Size();
    const JobSnapshot snap = JobSnapshot::Take(app);

    CKestoApp other;
    snap.Restore(other);
    EXPECT_EQ(other.HaichiList.Count, app.HaichiList.Count);
    EXPECT_EQ(other.BoxList.Count, app.BoxList.Count);
    EXPECT_EQ(other.PartsList.Count, app.PartsList.Count);
    EXPECT_EQ(other.KouteiList.Count, app.KouteiList.Count);
    EXPECT_EQ(other.PalletList.Count, app.PalletList.Count);
    EXPECT_EQ(other.BoxFlags, app.BoxFlags);
    EXPECT_EQ(other.Blocks.Count(), app.Blocks.Count());
    EXPECT_EQ(other.Blocks.Capacity(), app.Blocks.Capacity());
    ASSERT_EQ(other.Blocks.Size(), tableSize);
    for (size_t i = 0; i < tableSize; ++i) {
        const BlockInfo& a = app.Blocks[i];
        const BlockInfo& b = other.Blocks[i];
        EXPECT_EQ(a.MinX, b.MinX);
        EXPECT_EQ(a.MaxY, b.MaxY);
        EXPECT_EQ(a.CornerMask, b.CornerMask);
        EXPECT_EQ(a.KouteiNo, b.KouteiNo);
        EXPECT_EQ(a.PalletNo, b.PalletNo);
        EXPECT_EQ(a.Occupant, b.Occupant);
    }
}

TEST(JobSnapshotTest, UnchangedPartsAreSharedWithTheSnapshotBefore) {
    PlacedJob job(MediumJobShape());
    ASSERT_TRUE(job.Started());
    const JobSnapshot first = JobSnapshot::Take(job.App());
    job.App().PartsList.Items.front().PiecesSetAside += 1;
    const JobSnapshot second = JobSnapshot::Take(job.App(), &first);
    std::set<const void*> seen;
    const size_t firstBytes = first.Bytes(seen);
    const size_t secondBytes = second.Bytes(seen);
    EXPECT_LT(secondBytes * 2, firstBytes);

    // The changed part is its own copy: each snapshot gives back its own count.
    CKestoApp a;
    CKestoApp b;
    first.Restore(a);
    second.Restore(b);
    EXPECT_EQ(a.PartsList.Items.front().PiecesSetAside + 1,
              b.PartsList.Items.front().PiecesSetAside);
}

TEST(JobSnapshotTest, StacksComeBackWithTheirIdsSoThatASelectionFindsThemAgain) {
    PlacedJob job(MediumJobShape());
    ASSERT_TRUE(job.Started());
    CKestoApp& app = job.App();
    ASSERT_GE(app.HaichiList.size(), 3u);
    auto it = app.HaichiList.begin();
    const HaichiInfo& first = *it++;
    const HaichiInfo& second = *it++;
    const HaichiInfo& third = *it;
    Selection& sel = job.Drawing().Select();
    sel.SetPicked(second.Id);
    sel.SetLastPicked(first.Id);
    sel.AddToHistory(second.Id);
    sel.AddToHistory(third.Id);
    sel.StartBand({10, 20, 30, 40});
    sel.AddBandEntry({third.Id, {5, 6, 7, 8}});

    CKestoApp other;
    JobSnapshot::Take(app).Restore(other);
    ASSERT_EQ(other.HaichiList.size(), app.HaichiList.size());
    auto nth = [&other](size_t n) { return &*std::next(other.HaichiList.begin(), n); };
    EXPECT_EQ(other.HaichiList.Find(sel.Picked()), nth(1));
    EXPECT_EQ(other.HaichiList.Find(sel.LastPicked()), nth(0));
    EXPECT_EQ(other.HaichiList.Find(sel.PickHistory()[1]), nth(2));
    EXPECT_EQ(other.HaichiList.Find(sel.BandList()[0].Stack), nth(2));
    auto original = app.HaichiList.begin();
    for (const HaichiInfo& h : other.HaichiList) {
        EXPECT_EQ(h.Id, (original++)->Id);
        EXPECT_EQ(other.HaichiList.Find(h.Id), &h);
    }
    // A stack made after the restore gets the id a stack made in the original would get.
    EXPECT_EQ(other.HaichiList.NextId(), app.HaichiList.NextId());
    EXPECT_EQ(other.AddHaichiInfo()->Id, app.AddHaichiInfo()->Id);
}

// What a snapshot of the largest generated job holds, reported for the record.
TEST(JobSnapshotTest, LargestJobSnapshotSize) {
    PlacedJob job(LargestJobShape());
    ASSERT_TRUE(job.Started());
    const JobFiles before = job.Files();
    const JobSnapshot full = JobSnapshot::Take(job.App());
    const JobSnapshot next = JobSnapshot::Take(job.App(), &full);
    std::set<const void*> seen;
    const size_t fullBytes = full.Bytes(seen);
    const size_t stepBytes = next.Bytes(seen);
    std::cout << "largest job: " << job.App().PartsList.Items.size() << " parts, " << full.Stacks()
              << " stacks, " << job.App().Blocks.Size() << " block entries; a full snapshot "
              << fullBytes << " bytes, a step after it " << stepBytes << " bytes\n";
    RecordProperty("full_snapshot_bytes", static_cast<int>(fullBytes));
    RecordProperty("step_bytes", static_cast<int>(stepBytes));
    EXPECT_LT(stepBytes, fullBytes);
    next.Restore(job.App());
    EXPECT_EQ(job.Files(), before);
}

}  // namespace
}  // namespace kesto::test

// A snapshot gives back the job it was taken of: the same files, every link into the records
// it makes, the small boxes' flags and the block table as they were, the selection by
// position; the job's settings and run it leaves alone.
#include "history/JobSnapshot.h"

#include <gtest/gtest.h>

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
        if (b.Occupant != nullptr) {
            EXPECT_EQ(parts.count(b.Occupant), 1u);
            EXPECT_EQ(oldRecords.count(b.Occupant), 0u);
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
// operator chose since, the first failure and the end as they are.
TEST(JobSnapshotTest, SettingsAndRunStayAsTheyAre) {
    PlacedJob job(SmallJobShape());
    ASSERT_TRUE(job.Started());
    CKestoApp& app = job.App();
    app.Settings.IsDirect = 0;
    const JobSnapshot snap = JobSnapshot::Take(app);
    app.Settings.IsDirect = 1;
    app.Settings.PalletPrefix = "PX";
    app.Run.ErrorCode = 9015;
    app.Run.ExitParam = 12;
    app.Run.DialogEnd = OkCancel::Ok;
    snap.Restore(app);
    EXPECT_EQ(app.Settings.IsDirect, 1);
    EXPECT_EQ(app.Settings.PalletPrefix, "PX");
    EXPECT_EQ(app.Run.ErrorCode, 9015);
    EXPECT_EQ(app.Run.ExitParam, 12);
    EXPECT_EQ(app.Run.DialogEnd, OkCancel::Ok);
}

size_t Occupied(const CKestoApp& app) {
    size_t n = 0;
    for (const BlockInfo& b : app.Blocks.Entries())
        n += b.Occupant != nullptr ? 1 : 0;
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
    EXPECT_EQ(copy->HaichiList.Items.size(), job.App().HaichiList.Items.size());
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
        EXPECT_EQ(a.Occupant == nullptr, b.Occupant == nullptr);
        if (a.Occupant != nullptr && b.Occupant != nullptr) {
            EXPECT_EQ(a.Occupant->Seq, b.Occupant->Seq);
        }
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

TEST(JobSnapshotTest, SelectionComesBackByPosition) {
    PlacedJob job(MediumJobShape());
    ASSERT_TRUE(job.Started());
    CKestoApp& app = job.App();
    ASSERT_GE(app.HaichiList.Items.size(), 3u);
    auto it = app.HaichiList.begin();
    HaichiInfo* first = &*it++;
    HaichiInfo* second = &*it++;
    HaichiInfo* third = &*it;
    Selection& sel = job.Drawing().Select();
    sel.SetPicked(second);
    sel.SetLastPicked(first);
    sel.AddToHistory(second);
    sel.AddToHistory(third);
    sel.SetPickRect({1, 2, 3, 4});
    sel.StartBand({10, 20, 30, 40});
    sel.AddBandEntry({third, {5, 6, 7, 8}});
    sel.AddBandEntry({first, {9, 10, 11, 12}});
    sel.SetBand(BandState::Aside);
    const SelectionIndex index = SelectionIndex::Of(sel, app);
    EXPECT_EQ(index.Picked, 1);
    EXPECT_EQ(index.LastPicked, 0);
    EXPECT_EQ(index.History, (std::vector<RecordIndex>{1, 2}));

    CKestoApp other;
    JobSnapshot::Take(app).Restore(other);
    Selection back;
    index.ApplyTo(back, other);
    auto nth = [&other](size_t n) { return &*std::next(other.HaichiList.begin(), n); };
    EXPECT_EQ(back.Picked(), nth(1));
    EXPECT_EQ(back.LastPicked(), nth(0));
    EXPECT_EQ(back.PickHistory(), (std::vector<HaichiInfo*>{nth(1), nth(2)}));
    EXPECT_EQ(back.PickRect(), (IntRect{1, 2, 3, 4}));
    EXPECT_EQ(back.Band(), BandState::Aside);
    EXPECT_EQ(back.BandRect(), (IntRect{10, 20, 30, 40}));
    ASSERT_EQ(back.BandList().size(), 2u);
    EXPECT_EQ(back.BandList()[0].Record, nth(2));
    EXPECT_EQ(back.BandList()[1].Rect, (IntRect{9, 10, 11, 12}));
    EXPECT_EQ(SelectionIndex::Of(back, other), index);

    // No selection gives no selection.
    Selection none;
    SelectionIndex::Of(none, app).ApplyTo(back, other);
    EXPECT_EQ(back.Picked(), nullptr);
    EXPECT_EQ(back.Band(), BandState::Off);
    EXPECT_TRUE(back.BandList().empty());
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

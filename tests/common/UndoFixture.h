// A generated job started and placed by a session as the window does, with a drawing over it,
// and the files OK would write from it, read back as text: what the undo tests compare.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "JobGenerator.h"
#include "common/EditFixture.h"
#include "common/FileText.h"
#include "common/TestFiles.h"
#include "common/WideBoxJob.h"
#include "output/CKs_FileSave.h"

namespace kesto::test {

// The result file and the placement save file of a job.
struct JobFiles {
    std::string Result;
    std::string Placement;
    bool operator==(const JobFiles&) const = default;
};

inline JobFiles WriteJobFiles(CKestoApp& app, const Services& services, const TempFolder& folder) {
    const std::string result = (folder.Path() / "result.txt").string();
    const std::string placement = (folder.Path() / "placement.txt").string();
    CKs_FileSave save(app, services);
    EXPECT_TRUE(save.WriteResultFile(result).Ok());
    EXPECT_TRUE(save.WritePlacementFile(placement).Ok());
    return {ReadFile(result), ReadFile(placement)};
}

class PlacedJob {
  public:
    explicit PlacedJob(const JobShape& shape)
        : job_(WideBoxJob(shape)),
          install_(WriteInstallation(folder_.Path().string(), job_)),
          svc_(install_.Root),
          session_(svc_.Get(), install_.CommandLine, shown_) {
        started_ = session_.StartUp() && session_.Init();
        drawing_.SetArea({0, 0, 1200, 800});
        session_.App().Settings.IsDirect = 0;
        view_.Refresh();
    }
    PlacedJob(const PlacedJob&) = delete;
    PlacedJob& operator=(const PlacedJob&) = delete;

    bool Started() const { return started_; }
    CKestoApp& App() { return session_.App(); }
    JobSession& Session() { return session_; }
    ViewState& Shown() { return shown_; }
    TestServices& Svc() { return svc_; }
    PalletDrawing& Drawing() { return drawing_; }
    RecordingDrawAreaView& View() { return view_; }
    DrawingEdit& Edit() { return edit_; }
    DisplayList& Canvas() { return canvas_; }
    const GeneratedJob& Job() const { return job_; }
    JobFiles Files() { return WriteJobFiles(App(), svc_.Get(), out_); }

  private:
    TempFolder folder_;
    TempFolder out_;
    GeneratedJob job_;
    kesto::Installation install_;
    TestServices svc_;
    ViewState shown_;
    JobSession session_;
    PalletDrawing drawing_{session_.App(), shown_, svc_.Messages};
    RecordingDrawAreaView view_{drawing_};
    DrawingEdit edit_{session_.App(), svc_.Get(), drawing_, view_};
    DisplayList canvas_;
    bool started_ = false;
};

}  // namespace kesto::test

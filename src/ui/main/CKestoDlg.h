// The main window: lists of the job, the small-box buttons, the command strip and the places
// of the drawing area and the part panels. Decisions stay in the core; this class translates.
#pragma once

#include <QAction>
#include <QDialog>
#include <array>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/CKestoApp.h"
#include "render/FontTable.h"
#include "rules/PartsAllList.h"
#include "rules/SmallBoxPages.h"
#include "session/DrawingEdit.h"
#include "session/JobSession.h"
#include "session/ViewZoom.h"
#include "ui/dialogs/ShortTipItem.h"
#include "view/Controls.h"
#include "view/MainLayout.h"

class QComboBox;
class QKeyEvent;
class QListWidget;
class QPrinter;

namespace kesto {

class CKs_DrawArea;
class CKs_PartsInfo;
class CKs_PartsView;
class CKs_PartsAllDlg;

// Where the main window's layout stands (LayoutState).
enum class LayoutStep : int32_t {
    NeverShown = 0,
    Due = 2,  // shown or resized: laid out at the next chance
    LaidOut = 3,
};

class CKestoDlg : public QDialog, private SessionView, private DrawAreaView {
    Q_OBJECT
  public:
    CKestoDlg(JobSession& session, const FontTable& fonts, QWidget* parent = nullptr);
    ~CKestoDlg() override;

    // Title, small-box pages, the first placement. Returns 1 (also when the job ended here).
    int OnInitDialog();
    // Runs modally unless the job already ended during OnInitDialog; 1 OK, 2 Cancel.
    int Run();
    bool Ended() const { return ended_; }

    // --- layout and labels ---
    void LabelPass();
    void TitlePass();
    void LayoutPass();
    void SetCaption(QWidget* control, int font, const std::string& text);

    // --- lists and paging ---
    void FillSchedule();
    void FillAllParts(int koutei);
    void FillSmallBox(int koutei, int code);
    void FillTorioki(int koutei);
    void FillPalletSelect();
    void CountBoxPages();
    int TurnBoxPage(int direction);
    void UpdateBoxButtons();
    int BoxPage() const { return boxPages_.Page(); }
    int BoxPageCount() const { return boxPages_.PageCount(); }

    // --- commands ---
    void OnSelectKoutei();
    void OnSelectSmallBox(int k);  // k = 1, 2, 3
    void OnBoxPage(int direction);
    void OnDown();
    void OnUp();
    void OnSelectTorioki();
    void OnPalletSelect();
    void OnGrid();
    void On3D();
    void OnHit(HitBy hit);
    void OnView(PalletView mode);
    void OnDirect();
    void OnBlockDraw();
    void OnInfo();
    void OnRetry();
    void OnAuto();
    void OnOK();
    void OnCancel();
    void OnClose();
    void ShowAbout();
    // left and right: stacks from the pallets to the set-aside area and back; OK and the
    // close box follow the set-aside list.
    void OnLeft();
    void OnRight();
    void OnMaiChg();
    // Ctrl+Z, and Ctrl+Y or Ctrl+Shift+Z: the last correction taken back or done again, and
    // everything shown as after any command.
    void OnUndo();
    void OnRedo();
    // The background menu's undo and redo items (their texts and whether they can be chosen
    // follow the history when the menu opens).
    QAction* UndoAction() const { return undoAction_; }
    QAction* RedoAction() const { return redoAction_; }
    // Ctrl+P and the background menu's print item: the platform's print dialog, then the
    // sort sheet of the job as it stands, on the printer chosen there.
    void OnPrint();
    QAction* PrintAction() const { return printAction_; }
    // The sort sheet, the same pages kesto-batch --picture FILE.pdf writes, on printer
    // (whose page layout the caller chose); the empty text on success, else what went wrong.
    // Neither the job nor what the window shows is changed.
    std::string PrintTo(QPrinter& printer);
    // The main window's all-parts list: picks the caret line's part in the drawing.
    void OnAllPartsSelect();
    // Fills the all-parts dialog for the process in view.
    void RefreshPartsAll();

    QWidget* Control(ControlId id) const;
    CKestoApp& App() { return app_; }
    DrawingEdit& Editing() { return *editing_; }
    const ViewState& Shown() const { return shown_; }
    // Brings the screen up to date after a command: the lists, the part panels, the drawing,
    // the buttons and the all-parts dialog that show what changed, and nothing else.
    void Present(ChangeSet changed);
    // The whole job shown anew, laid out again: after the journal of an earlier run was replayed
    // under the window.
    void ShowWholeJob();
    // Runs task once, when the window has been shown with the placement for the first time.
    void WhenShown(std::function<void()> task);
    LayoutStep Layout() const { return layoutStep_; }
    // Lets the next layout pass run as on a window being shown (the tests lay out a window
    // that is never shown).
    void MarkLayoutDue() { layoutStep_ = LayoutStep::Due; }
    // The last layout pass's places of the controls and panels.
    const MainLayout& LastLayout() const { return layout_; }
    // Whether the operator wants the all-parts dialog shown (it is hidden for a moment while
    // the view changes).
    Visibility PartsAllState() const { return partsAllState_; }
    CKs_DrawArea* DrawArea() const { return drawArea_; }
    CKs_PartsInfo* PartsInfoPanel() const { return partsInfo_; }
    CKs_PartsView* PartsViewPanel() const { return partsView_; }
    CKs_PartsAllDlg* PartsAllDialog() const { return partsAll_; }

    void reject() override;

  protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void RunWhenShown();
    void BuildControls();
    void ConnectCommands();
    // The drawing area's mouse editing and the left and right buttons.
    void ConnectEditing();
    // Ctrl+P.
    void ConnectPrinting();
    // Escape during a drag, Tab, Shift+Tab and the arrows in the drawing, Delete.
    void ConnectKeys();
    // Every control's accessible name and description, in the message file's words.
    void NameControls();
    // A key pressed in the drawing; true when it was taken.
    bool DrawingKey(QKeyEvent* event);
    // + (or =), - and 0 in FLAT and DANMEN: closer, farther, the whole pallet; none for
    // another key, or during a drag or a pan.
    std::optional<ChangeSet> ZoomKey(int key);
    // The stacks on the drawing, pallet by pallet in view, each pallet's as the sheet lists
    // them.
    std::vector<const HaichiInfo*> StacksInView() const;
    // The next (or previous) stack of StacksInView picked; false past either end.
    bool WalkStacks(bool forward);
    // OK and the close box follow whether any part is set aside; the undo items the history.
    void FollowSetAside();
    // Refuses the close box while OK is disabled; passes the drawing's keys to DrawingKey.
    bool eventFilter(QObject* watched, QEvent* event) override;
    void ConnectPartsAll();
    // Makes the control of one entry of kControls.
    void MakeControl(const ControlEntry& entry);
    void ApplyLayout();
    void RequestLayout();
    void SetChecked(ControlId id, bool checked);
    void ResetToggles();
    void SelectScheduleRow(int row);
    // item: the line's own item, or null for a plain one.
    void AddLine(QListWidget* list, const std::string& line, QListWidgetItem* item = nullptr);
    // Why a part is short, as the session tells it.
    WhyShortFn WhyShort();
    // The Seq of the list's selected line, none when no line is selected.
    std::optional<int32_t> SelectedSeq(const QListWidget* list) const;
    // The part lists that show what changed.
    void PresentLists(ChangeSet changed);
    // The drawing again after a change, with the all-parts dialog over it.
    void PresentDrawing(ChangeSet changed);
    // Both part panels drawn again.
    void RepaintPanels();
    // The picked stack's highlight over the drawing, when there is one.
    void DrawHitDisplay();
    // Message 15 when a rubber-band selection is in force; true then.
    bool RefusedForBand();
    // Closes the dialog once the session has ended the job.
    void EndIfJobEnded();
    void EndDialog(OkCancel end);

    // SessionView.
    void ShowResetJob() override;
    void ShowPlacedJob() override;

    // DrawAreaView.
    void Refresh() override;
    void ShowDragImage(const std::vector<IntRect>& rects) override;
    void HideDragImage() override;
    void SyncPartList(const std::vector<int32_t>& seqs) override;
    void SelectPartsAllLine(int32_t seq) override;
    void RefreshInfoPanel() override;
    void ShowRefusedDrop(DropRefusal why, const std::vector<IntRect>& rects) override;
    void ShowLanding(const std::optional<DropPreview>& landing) override;

    JobSession& session_;
    CKestoApp& app_;
    const ViewState& shown_;  // what this window shows; the session's commands change it
    // The arrangement toggle's two captions ("B-NEST-A" for IsDirect 0, "B-NEST-D" otherwise):
    // font numbers and texts, read by the first layout.
    std::array<int32_t, 2> nestCaptionFonts_{1, 1};
    std::array<std::string, 2> nestCaptionTexts_;
    const FontTable& fonts_;
    std::map<ControlId, QWidget*> controls_;
    QComboBox* palletSelect_ = nullptr;
    QListWidget* torioki_ = nullptr;
    QListWidget* smallBox_ = nullptr;
    QListWidget* schedule_ = nullptr;
    QListWidget* allParts_ = nullptr;
    CKs_DrawArea* drawArea_ = nullptr;
    CKs_PartsInfo* partsInfo_ = nullptr;
    CKs_PartsView* partsView_ = nullptr;
    CKs_PartsAllDlg* partsAll_ = nullptr;
    SmallBoxPages boxPages_;
    int boxCaptionFont_ = 1;
    std::string boxCaptionPrefix_;
    bool layoutQueued_ = false;
    LayoutStep layoutStep_ = LayoutStep::NeverShown;
    MainLayout layout_;
    Visibility partsAllState_ = Visibility::Hidden;
    bool ended_ = false;
    int endCode_ = 0;
    std::unique_ptr<DrawingEdit> editing_;
    std::unique_ptr<ViewZoom> zoom_;
    std::function<void()> whenShown_;
    QAction* undoAction_ = nullptr;
    QAction* redoAction_ = nullptr;
    QAction* printAction_ = nullptr;
    QAction* setAsideAction_ = nullptr;
    // The undo and redo items as the history now stands.
    void UpdateUndoActions();
};

}  // namespace kesto

// The all-parts dialog: every part of the current process in one line, sorted by the five
// buttons above the list, lying over the drawing area of the main window. A click on a line
// shows the part's stacks in the drawing. It is a child of the main window without a frame,
// placed in the main window's coordinates from the drawing area's screen rectangle.
#pragma once

#include <QWidget>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "app/CKestoApp.h"
#include "app/ViewState.h"
#include "render/FontTable.h"
#include "rules/PartsAllList.h"
#include "support/MessageFile.h"
#include "ui/dialogs/ShortTipItem.h"

class QListWidget;
class QPushButton;

namespace kesto {

class CKs_DrawArea;

class CKs_PartsAllDlg : public QWidget {
    Q_OBJECT
  public:
    // Made hidden; area is the drawing whose pallets mark the lines and whose picks a line
    // click changes.
    CKs_PartsAllDlg(CKestoApp& app, const ViewState& shown, const MessageTable& messages,
                    const FontTable& fonts, CKs_DrawArea& area, WhyShortFn why, QWidget* parent);

    // State 1 hides the dialog over the lower half of the drawing area; state 2 shows it there
    // (over the whole area in FLAT), lays its controls out and fills it for the process in view.
    void Place(Visibility state);
    // Buttons and list from the client size, captions and fonts of "PartsAlInfDlg".
    void LayOutControls();
    // The lines of process koutei; nothing changes when there is no such process.
    void Fill(int32_t koutei);
    // Selects the line of the drawing's Picked part, or none.
    void SelectLineOfPart();
    // Selects the first line of part seq, or none; the drawing is not touched.
    void SelectLineOfSeq(int32_t seq);
    // The part of the selected line, if one is selected.
    std::optional<int32_t> SelectedSeq() const;

    int32_t SortKey() const { return sortKey_; }
    void SetSortKey(int32_t key) { sortKey_ = key; }
    QListWidget* List() const;

  private:
    void OnSortButton(SortButton button);
    void OnSelectLine();
    std::vector<std::string> Lines() const;
    void SelectRow(std::optional<size_t> row);
    // The font of key always, its text unless it is "?????".
    void SetCaption(QWidget* control, const char* key);

    CKestoApp& app_;
    const ViewState& shown_;
    const MessageTable& messages_;
    const FontTable& fonts_;
    CKs_DrawArea& area_;
    WhyShortFn why_;
    std::array<QPushButton*, 5> buttons_{};  // in the order of SortButton
    QListWidget* list_ = nullptr;
    int32_t sortKey_ = 0;
};

}  // namespace kesto

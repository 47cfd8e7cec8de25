#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QPixmap>
#include <QTableView>
#include <QUrl>

#include <array>
#include <functional>
#include <optional>

#include "views/forms/pane_model.h"

namespace vantrel {

// How a pane looks.
struct PaneLooks {
    QFont font;
    bool lines = false;  // between the cells
    QPixmap background;  // tiled behind the rows; without one the pane is plain
};

// What a search marks in a pane.
struct PaneMarks {
    std::function<bool(std::size_t)> fits;  // asked for the rows that are painted; not set: nothing does
    std::optional<std::size_t> found;       // the row that the search has come to
};

// Where the clicks and keys of a pane go: they change the rows of the PaneList that the pane shows.
class PaneSelector {
  public:
    virtual ~PaneSelector() = default;
    // While a job runs, a pane takes neither clicks nor keys; it can still be scrolled with the mouse.
    virtual bool IsEnabled() const = 0;
    virtual void Pressed() = 0;  // the mouse, before anything else
    virtual void Click(std::optional<std::size_t> row, SelectionKeys keys) = 0;
    virtual void MoveTo(std::size_t row, SelectionKeys keys) = 0;
    virtual void SelectAll() = 0;
    virtual void DeselectAll() = 0;
};

// A result pane: a table whose selection lives in the rows of its list. All rows are of one height, no column
// is sized by asking every row, and a click on a header does nothing.
class PaneView : public QTableView {
    Q_OBJECT
  public:
    // `model` and `selector` must outlive the view.
    PaneView(PaneModel& model, PaneSelector& selector, QWidget* parent = nullptr);

    const PaneList& List() const { return model_.List(); }

    // Pixels, of the three columns.
    using Widths = std::array<int, PaneModel::ColumnCount>;
    Widths ColumnWidths() const;
    // A width that is not above 0 leaves its column. Ends the fitting.
    void SetColumnWidths(const Widths& widths);
    void SetLooks(const PaneLooks& looks);
    // The columns are fitted by FitColumns until the user changes one of them.
    void SetColumnsFitted(bool fitted) { fitted_ = fitted; }
    bool AreColumnsFitted() const { return fitted_; }
    // What all texts of the column need, its heading too; of names, the longest ones.
    int WidthForContents(PaneModel::Column column) const;
    // Sizes and dates take these widths and the names the rest, if the columns are to be fitted.
    void FitColumns(const Widths& widths);

    void SetMarks(PaneMarks marks);
    const PaneMarks& Marks() const { return marks_; }

    // The rows are others now: shows them from the list's top row.
    void ShowNewRows();
    // The selection or the selected item changed.
    void ShowSelection();
    void EnsureVisible(std::size_t row);
    // Row at the top of the visible part, and the way to bring it there.
    int TopItem() const;
    void SetTopItem(int row);
    std::optional<std::size_t> RowAt(const QPoint& position) const;  // of the viewport

    // Letters typed one after the other search for a name that begins so.
    void keyboardSearch(const QString& text) override;

  Q_SIGNALS:
    // Double click or Enter on a real row, and where a menu is to open that follows.
    void RowActivated(std::size_t row, const QPoint& globalPosition);
    void MenuRequested(const QPoint& globalPosition);
    void DeleteRequested(bool permanently);
    void DragRequested();  // out of the pane, over a selected row
    void UrisDropped(const QList<QUrl>& uris, Qt::KeyboardModifiers keys);
    void ScrolledByBar(int topItem);  // by the scroll bar only, not by wheel or keys
    void RoomChanged();               // the width or the font

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;

  private:
    void SetUpLook();
    void SetUpHeaders();
    void FitRowHeight();
    int WidthOfLongestNames() const;
    QPoint MenuPlace(std::size_t row);  // below the beginning of its name; of the screen
    std::optional<std::size_t> GoalOfKey(int key) const;
    bool HandleCommandKey(const QKeyEvent& event);
    void PressLeft(std::optional<std::size_t> row, SelectionKeys keys);
    void PressRight(std::optional<std::size_t> row);
    int RowsOnPage() const;
    QRect RectOfRow(std::size_t row) const;  // of the viewport

    PaneModel& model_;
    PaneSelector& selector_;
    QPixmap background_;
    PaneMarks marks_;
    bool fitted_ = false;
    bool fitting_ = false;  // the columns change, and not by the user's hand
    QPoint pressedAt_;
    std::optional<std::size_t> clickOnRelease_;  // a press on a selected row may begin a drag
    SelectionKeys releaseKeys_;
    bool mayDrag_ = false;
    QString searchText_;
    QElapsedTimer searchClock_;
};

}  // namespace vantrel

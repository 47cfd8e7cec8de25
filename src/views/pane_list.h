#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "core/result_list.h"

namespace vantrel {

class LocaleFormats;

// How a click or key changes a selection.
struct SelectionKeys {
    bool extend = false;  // Shift: the run of rows from the anchor to here
    bool toggle = false;  // Ctrl: what is selected elsewhere stays
};

// One list that the user sees: its rows with the selection in them, the selected item and the anchor. Only
// real rows are ever selected. Rows are numbered from 0.
class PaneList {
  public:
    const ResultList& Rows() const { return rows_; }
    std::size_t Count() const { return rows_.Count(); }
    const ResultRow& operator[](std::size_t row) const { return rows_[row]; }

    // Takes the rows of `rows`, which is empty afterwards. Selection, selected item, anchor and top row are
    // gone.
    void TakeRows(ResultList& rows);
    // The rows, of which the pane has none then.
    ResultList GiveUpRows();

    // The first row that its window shows. Those who show it keep it up to date.
    std::size_t TopRow() const { return topRow_; }
    void SetTopRow(std::size_t row) { topRow_ = row; }
    // The largest size among the rows, which needs the widest column.
    Currency LargestSize() const { return largestSize_; }

    std::size_t SelectedCount() const { return selectedCount_; }
    std::vector<std::size_t> SelectedRows() const;
    // The item that commands on one object act on: the row last clicked or moved to, also where it is a
    // placeholder or not selected.
    std::optional<std::size_t> SelectedItem() const { return selectedItem_; }
    // For the commands that need an object: the selected item when it is a real row, otherwise nullptr.
    const ResultRow* SelectedObject() const;
    void SetSelectedItem(std::optional<std::size_t> row);

    // A placeholder or the sentinel stays as it is.
    void SetSelected(std::size_t row, bool selected);
    // Every real row selected, whatever it was; the selected item stays.
    void SelectAll();
    // No row selected and no selected item.
    void DeselectAll();
    // No row selected; the selected item stays.
    void ClearSelection();
    void Invert();
    // Sets the state of the real rows for which wanted(row) is true, leaving the others.
    template <typename Wanted>
    void SetSelectedWhere(Wanted&& wanted, bool selected) {
        for (ResultRow& row : rows_)
            if (row.IsReal() && wanted(static_cast<const ResultRow&>(row))) Mark(row, selected);
    }
    // A click on `row`, or on the empty place below the last row.
    void Click(std::optional<std::size_t> row, SelectionKeys keys);
    // The keyboard moved to `row`: with toggle alone the selection stays as it is.
    void MoveTo(std::size_t row, SelectionKeys keys);
    // The next selected row after the selected item, wrapping round; nothing where there is no other.
    std::optional<std::size_t> NextSelected() const;

    // Real rows, and the sum of their sizes, counted anew each time.
    struct Totals {
        std::size_t objects = 0;
        Currency bytes;
    };
    Totals AllTotals() const;
    Totals SelectedTotals() const;

    // How counts and sizes of the status texts are written; null: as the C locale does, without groups. It
    // must outlive the list.
    void SetLocale(const LocaleFormats* locale) { locale_ = locale; }
    const LocaleFormats* Locale() const { return locale_; }

    // Counter, selected item and selection fit the rows.
    bool IsConsistent(std::string* why = nullptr) const;

  private:
    friend class AlignedPanes;
    friend class ResultPanes;
    void Mark(ResultRow& row, bool selected) {
        if (row.selected == selected) return;
        row.selected = selected;
        selected ? ++selectedCount_ : --selectedCount_;
    }
    void SelectRun(std::size_t first, std::size_t last);

    ResultList rows_;
    std::size_t selectedCount_ = 0;
    std::optional<std::size_t> selectedItem_;
    std::optional<std::size_t> anchor_;
    std::size_t topRow_ = 0;
    Currency largestSize_;
    const LocaleFormats* locale_ = nullptr;
};

// "Total N object(s)  (size)" and "Selected N object(s)  (size)".
std::string TotalsText(const PaneList& list);
std::string SelectionText(const PaneList& list);
// The selection where at least one row is selected, otherwise the totals.
std::string StatusTextOf(const PaneList& list);

}  // namespace vantrel

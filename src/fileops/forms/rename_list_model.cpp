#include "fileops/forms/rename_list_model.h"

#include <QApplication>
#include <QPainter>
#include <QTextLayout>
#include <array>

#include "fileops/differing_parts.h"
#include "platform/forms/qt_text.h"

namespace vantrel {
namespace {

QString ConflictText(RenameVerdict verdict) {
    switch (verdict) {
        case RenameVerdict::Conflict:
            return QStringLiteral("Yes");
        case RenameVerdict::Unchanged:
            return QStringLiteral("Unchanged");
        case RenameVerdict::Free:
        case RenameVerdict::Impossible:
            break;
    }
    return QStringLiteral("No");
}

QString Explanation(RenameVerdict verdict) {
    switch (verdict) {
        case RenameVerdict::Conflict:
            return QStringLiteral(
                "Another object of the folder, or an earlier one of this list, has this name.");
        case RenameVerdict::Impossible:
            return QStringLiteral("No file system takes this name; the object will keep its own.");
        case RenameVerdict::Free:
        case RenameVerdict::Unchanged:
            break;
    }
    return {};
}

std::u16string_view UnitsOf(const QString& text) {
    return {reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size())};
}

}  // namespace

RenameListModel::RenameListModel(const std::vector<ObjectToRename>& objects, QObject* parent)
    : QAbstractTableModel(parent), objects_(objects) {
}

void RenameListModel::Show(std::vector<RevisedName> revised) {
    revised_ = std::move(revised);
    if (!objects_.empty())
        Q_EMIT dataChanged(index(0, RevisedNameColumn), index(rowCount() - 1, ConflictsColumn));
}

int RenameListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(objects_.size());
}

int RenameListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : RenameColumnCount;
}

QString RenameListModel::ShownName(std::size_t row, const std::string& name) const {
    const bool isFolder = objects_[row].kind == Sighting::Kind::Folder;
    return (isFolder ? QString(QLatin1Char(kFolderMarker)) : QString()) + DisplayQString(name);
}

QVariant RenameListModel::data(const QModelIndex& index, int role) const {
    const auto row = static_cast<std::size_t>(index.row());
    const RevisedName* revised = row < revised_.size() ? &revised_[row] : nullptr;
    if (role == Qt::ToolTipRole && revised && !Explanation(revised->verdict).isEmpty())
        return Explanation(revised->verdict);
    if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole && role != Qt::ToolTipRole) return {};
    if (index.column() == OriginalName) return ShownName(row, objects_[row].name);
    if (!revised) return {};
    return index.column() == RevisedNameColumn ? ShownName(row, revised->name)
                                               : ConflictText(revised->verdict);
}

QVariant RenameListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    static constexpr std::array kCaptions{"Original Name", "Revised Name", "Conflicts?"};
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return QLatin1String(kCaptions[static_cast<std::size_t>(section)]);
}

void RevisedNameDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const {
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const QString text = item.text;
    const QString original = index.sibling(index.row(), OriginalName).data().toString();
    item.text.clear();
    QStyle* style = item.widget ? item.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);

    const bool selected = (item.state & QStyle::State_Selected) != 0;
    const QPalette::ColorRole role = selected ? QPalette::HighlightedText : QPalette::Text;
    QTextCharFormat mark;
    constexpr qreal kPale = 0.35;
    QColor colour = item.palette.color(selected ? QPalette::HighlightedText : QPalette::Highlight);
    colour.setAlphaF(kPale);
    mark.setBackground(colour);
    QList<QTextLayout::FormatRange> formats;
    for (const TextPart& part : DifferingParts(UnitsOf(original), UnitsOf(text)))
        formats.append({static_cast<int>(part.from), static_cast<int>(part.length), mark});
    constexpr int kMargin = 3;
    const QRect place = style->subElementRect(QStyle::SE_ItemViewItemText, &item, item.widget)
                            .adjusted(kMargin, 0, -kMargin, 0);
    QTextLayout layout(text, item.font);
    layout.setFormats(formats);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    if (line.isValid()) line.setLineWidth(1 << 20);
    layout.endLayout();
    painter->save();
    painter->setClipRect(item.rect.adjusted(kMargin, 0, -kMargin, 0));
    painter->setPen(item.palette.color(
        item.widget && item.widget->isEnabled() ? QPalette::Active : QPalette::Disabled, role));
    const qreal top = item.rect.top() + (item.rect.height() - layout.boundingRect().height()) / 2;
    layout.draw(painter, QPointF(place.left(), top));
    painter->restore();
}

}  // namespace vantrel

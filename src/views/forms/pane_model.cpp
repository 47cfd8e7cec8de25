#include "views/forms/pane_model.h"

#include <QPixmap>

#include "core/row_texts.h"
#include "platform/forms/qt_text.h"

namespace vantrel {
namespace {

QString HeaderText(Side side, PaneModel::Content content, int column) {
    switch (column) {
        case PaneModel::Name:
            return QStringLiteral("Name");
        case PaneModel::Size:
            return QStringLiteral("Size");
        // Two blanks between the words on the right side of the results.
        case PaneModel::ModifiedDate:
            return side == Side::Left || content == PaneModel::Content::SubFolder
                       ? QStringLiteral("Modified Date")
                       : QStringLiteral("Modified  Date");
        default:
            return {};
    }
}

int AlignmentOf(int column) {
    return static_cast<int>(Qt::AlignVCenter | (column == PaneModel::Size ? Qt::AlignRight : Qt::AlignLeft));
}

// Of each month one late in the morning and one late in the evening: every name of a month and of a half of
// the day that there is, and two digits wherever there can be two.
QStringList DatesOfAllLengths(const LocaleFormats& locale) {
    constexpr std::int64_t kDay = 86'400;
    constexpr std::int64_t kFirst = 1'832'673'598;  // 2028-01-28 11:59:58
    QStringList dates;
    for (std::int64_t month = 0; month < 12; ++month)
        for (const std::int64_t hours : {0, 12})
            dates << ToQString(
                locale.DateTime(FileTime::FromUnix(kFirst + month * 30 * kDay + hours * 3'600, 0)));
    return dates;
}

}  // namespace

PaneModel::PaneModel(const PaneList& list, Side side, Content content, const LocaleFormats& locale,
                     const ResultIcons& icons, QObject* parent)
    : QAbstractTableModel(parent),
      list_(list),
      side_(side),
      content_(content),
      locale_(locale),
      sampleDates_(DatesOfAllLengths(locale)) {
    // A row without a type keeps its name in line with those that have one.
    QPixmap blank(16, 16);
    blank.fill(Qt::transparent);
    icons_[0] = QIcon(blank);
    for (int type = 1; icons && type <= kResultTypeCount; ++type)
        icons_[static_cast<std::size_t>(type)] = icons(static_cast<ResultType>(type), true);
}

QString PaneModel::LargestSizeText() const {
    return ToQString(locale_.Number(list_.LargestSize()));
}

void PaneModel::Reset() {
    beginResetModel();
    endResetModel();
}

int PaneModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(list_.Count());
}

int PaneModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant PaneModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) return {};
    const ResultRow& row = Row(index.row());
    switch (role) {
        case Qt::DisplayRole:
            switch (index.column()) {
                case Name:
                    return NameText(row);
                case Size:
                    return ToQString(SizeText(row, locale_));
                case ModifiedDate:
                    return ToQString(DateText(row, locale_));
                default:
                    return {};
            }
        case Qt::DecorationRole: {
            const auto type = static_cast<std::size_t>(row.type);
            if (index.column() != Name || type >= icons_.size()) return {};
            if (type == 0 && row.kind != RowKind::Unknown) return {};
            return icons_[type];
        }
        case Qt::ToolTipRole: {
            const std::string why = WhyLeftAlone(row);
            return why.empty() ? QVariant() : QVariant(ToQString(why));
        }
        case Qt::TextAlignmentRole:
            return AlignmentOf(index.column());
        case Qt::AccessibleTextRole:
            return index.column() == Name ? AccessibleText(row) : QVariant();
        default:
            return {};
    }
}

QString PaneModel::NameText(const ResultRow& row) const {
    return DisplayQString(content_ == Content::SubFolder && row.IsReal() ? row.realName : row.text);
}

// What the icon and the highlight tell the eye, in words.
QString PaneModel::AccessibleText(const ResultRow& row) const {
    QString text = NameText(row);
    if (row.type != ResultType::None) text += QStringLiteral(", ") + ToQString(ResultTypeText(row.type));
    if (row.elsewhere != Elsewhere::No) text += QStringLiteral(", left alone");
    if (row.selected) text += QStringLiteral(", selected");
    return text;
}

QVariant PaneModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::DisplayRole) return HeaderText(side_, content_, section);
    if (role == Qt::TextAlignmentRole) return AlignmentOf(section);
    return {};
}

Qt::ItemFlags PaneModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

}  // namespace vantrel

#include "views/forms/frm_compare_results.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "platform/forms/qt_text.h"
#include "platform/forms/window_size.h"
#include "views/forms/pie_chart.h"
#include "views/forms/tiled_background.h"

namespace vantrel {
namespace {

enum Column { Type = 0, Number = 1 };
// 4,630 and 926 twips at 15 twips a pixel.
constexpr int kTypeWidth = 309, kNumberWidth = 62;
constexpr int kChartWidth = 230;  // with the room around it
constexpr int kRoomAroundNumber = 16;

// A list over a tiled picture.
class TiledList : public QTreeWidget {
  public:
    TiledList(QPixmap tile, QWidget* parent) : QTreeWidget(parent), tile_(std::move(tile)) {}

  protected:
    void paintEvent(QPaintEvent* event) override {
        if (!tile_.isNull()) {
            QPainter painter(viewport());
            PaintTiles(painter, *viewport(), tile_);
        }
        QTreeWidget::paintEvent(event);
    }

  private:
    QPixmap tile_;
};

}  // namespace

frmCompareResults::frmCompareResults(const Parts& parts, QWidget* parent)
    : QDialog(parent),
      lvwFileTypes(new TiledList(parts.background, this)),
      picPieChart(new PieChart(this)),
      optLeftFolder(new QRadioButton(QStringLiteral("Show Left Folder Summary"), this)),
      optRightFolder(new QRadioButton(QStringLiteral("Show Right Folder Summary"), this)),
      chkAutoShowGraphAfterCompare(new QCheckBox(QStringLiteral("Show Summary After Comparison"), this)),
      OKButton(new QPushButton(QStringLiteral("OK"), this)),
      CancelButton(new QPushButton(QStringLiteral("Cancel"), this)),
      reporter_(parts.reporter),
      paths_(parts.paths),
      icons_(parts.icons) {
    setObjectName(QStringLiteral("frmCompareResults"));
    setWindowTitle(QStringLiteral("Comparison Results Summary"));
    lvwFileTypes->setObjectName(QStringLiteral("lvwFileTypes"));
    lvwFileTypes->setAccessibleName(QStringLiteral("Counts by type"));
    optLeftFolder->setObjectName(QStringLiteral("optLeftFolder"));
    optRightFolder->setObjectName(QStringLiteral("optRightFolder"));
    chkAutoShowGraphAfterCompare->setObjectName(QStringLiteral("chkAutoShowGraphAfterCompare"));
    OKButton->setObjectName(QStringLiteral("OKButton"));
    CancelButton->setObjectName(QStringLiteral("CancelButton"));
    LayOut();
    chkAutoShowGraphAfterCompare->setChecked(parts.showAfterCompare);
    connect(optLeftFolder, &QRadioButton::toggled, this,
            [this](bool left) { ShowSide(left ? Side::Left : Side::Right); });
    connect(OKButton, &QPushButton::clicked, this, [this, store = parts.storeShowAfterCompare] {
        reporter_.GuardRun("frmCompareResults.OKButton_Click",
                           [&] { store(chkAutoShowGraphAfterCompare->isChecked()); });
        accept();
    });
    connect(CancelButton, &QPushButton::clicked, this, &QDialog::reject);
    Load(parts.hold);
}

void frmCompareResults::LayOut() {
    lvwFileTypes->setColumnCount(2);
    lvwFileTypes->setHeaderLabels({QStringLiteral("Type"), QStringLiteral("#")});
    lvwFileTypes->headerItem()->setTextAlignment(Number, Qt::AlignRight | Qt::AlignVCenter);
    lvwFileTypes->setRootIsDecorated(false);
    lvwFileTypes->setTextElideMode(Qt::ElideMiddle);
    lvwFileTypes->header()->setStretchLastSection(false);
    lvwFileTypes->header()->setSectionResizeMode(Type, QHeaderView::Stretch);
    lvwFileTypes->header()->setSectionResizeMode(Number, QHeaderView::Fixed);

    auto* chart = new QVBoxLayout;
    chart->addStretch(1);
    chart->addWidget(picPieChart, 0, Qt::AlignHCenter);
    chart->addStretch(1);
    chart->addWidget(optLeftFolder);
    chart->addWidget(optRightFolder);
    auto* row = new QHBoxLayout;
    row->setSpacing(12);
    row->addWidget(lvwFileTypes, 1);
    row->addLayout(chart);
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(OKButton, QDialogButtonBox::AcceptRole);
    buttons->addButton(CancelButton, QDialogButtonBox::RejectRole);
    OKButton->setDefault(true);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(chkAutoShowGraphAfterCompare);
    bottom->addStretch(1);
    bottom->addWidget(buttons);
    auto* column = new QVBoxLayout(this);
    column->addLayout(row, 1);
    column->addLayout(bottom);
    QWidget* before = lvwFileTypes;
    for (QWidget* widget : std::initializer_list<QWidget*>{
             optLeftFolder, optRightFolder, chkAutoShowGraphAfterCompare, OKButton, CancelButton}) {
        setTabOrder(before, widget);
        before = widget;
    }
}

void frmCompareResults::Load(const HoldLists& hold) {
    reporter_.Guard("frmCompareResults.Form_Load", [&] {
        reporter_.Guard("frmCompareResults.GetFileTypeCounts", [&] { counts_ = GetFileTypeCounts(hold); });
        optLeftFolder->setChecked(true);
        int wanted = kNumberWidth;
        for (const Side side : kBothSides) {
            const QString total = QString::number(counts_[side].Total());
            wanted = std::max(wanted, lvwFileTypes->fontMetrics().horizontalAdvance(total) +
                                          lvwFileTypes->iconSize().width() + kRoomAroundNumber);
        }
        lvwFileTypes->setColumnWidth(Number, wanted);
        // Ten rows and the header, and the pie beside them.
        const int rowHeight = lvwFileTypes->sizeHintForRow(0) + 1;
        const QSize hint = sizeHint();
        // The first row is a path, which may be cut.
        int types = kTypeWidth;
        for (int i = 1; i < lvwFileTypes->topLevelItemCount(); ++i)
            types = std::max(types, lvwFileTypes->fontMetrics().horizontalAdvance(
                                        lvwFileTypes->topLevelItem(i)->text(Type)) +
                                        lvwFileTypes->iconSize().width() + kRoomAroundNumber);
        const int beside = std::max(kChartWidth, optRightFolder->sizeHint().width() + kRoomAroundNumber);
        lvwFileTypes->setMinimumHeight(std::min(10 * rowHeight, 240));
        ResizeWithinScreen(*this, {std::max(hint.width(), types + wanted + beside),
                                   std::max(hint.height(), 12 * rowHeight + 80)});
    });
}

void frmCompareResults::ShowSide(Side side) {
    AddFileCountsToListview(side);
    DrawPie(side);
}

void frmCompareResults::AddFileCountsToListview(Side side) {
    reporter_.Guard("frmCompareResults.AddFileCountsToListview", [&] {
        lvwFileTypes->clear();
        const FileTypeCounts& counts = counts_[side];
        const auto add = [this](const QString& text, const QString& number) {
            auto* item = new QTreeWidgetItem(lvwFileTypes, {text, number});
            item->setTextAlignment(Number, Qt::AlignRight | Qt::AlignVCenter);
            return item;
        };
        QTreeWidgetItem* folder = add(DisplayQString(paths_[side]), QString::number(counts.Total()));
        folder->setToolTip(Type, DisplayQString(paths_[side]));
        add({}, {})->setFlags(Qt::NoItemFlags);
        for (const ResultType type : kTypesInList) {
            QTreeWidgetItem* item = add(ToQString(SummaryText(type)), QString::number(counts.Of(type)));
            if (icons_) item->setIcon(Type, icons_(type, true));
            item->setIcon(Number, SliceSwatch(type, *this));
            for (const int column : {Type, Number})
                item->setToolTip(column, ToQString(SliceText(counts, type)));
        }
        // A screen reader wants a current row.
        lvwFileTypes->setCurrentItem(folder);
    });
}

void frmCompareResults::DrawPie(Side side) {
    reporter_.Guard("frmCompareResults.DrawPie", [&] {
        picPieChart->Show(counts_[side], side == Side::Left ? QStringLiteral("Pie of the left folder")
                                                            : QStringLiteral("Pie of the right folder"));
    });
}

}  // namespace vantrel

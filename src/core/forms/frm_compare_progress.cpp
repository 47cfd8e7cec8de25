#include "core/forms/frm_compare_progress.h"

#include <QApplication>
#include <QEventLoop>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <algorithm>

#include "platform/currency.h"
#include "platform/forms/animation_view.h"
#include "platform/forms/qt_text.h"

namespace vantrel {
namespace {

// A bar counts with int; this is finer than any bar is wide.
constexpr int kBarSteps = 10'000;

int BarStep(std::int64_t value, std::int64_t maximum) {
    const double share = static_cast<double>(value) / static_cast<double>(maximum);
    return static_cast<int>(std::clamp(share, 0.0, 1.0) * kBarSteps);
}

}  // namespace

frmCompareProgress::frmCompareProgress(QtEventLoop& loop, const FileSystem& files,
                                       const ProgramFolders& folders, const LocaleFormats& locale,
                                       QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint),
      loop_(loop),
      files_(files),
      folders_(folders),
      locale_(locale),
      animFolder_(new AnimationView(this)),
      lblMessage_(new QLabel(this)),
      lblFileName_(new QLabel(this)),
      lblCount_(new QLabel(this)),
      progressBar_(new QProgressBar(this)),
      cmdCancel_(new QPushButton(QStringLiteral("&Cancel"), this)),
      timer1_(this) {
    setObjectName(QStringLiteral("frmCompareProgress"));
    setWindowTitle(QStringLiteral("Comparing Folders"));
    animFolder_->setObjectName(QStringLiteral("animFolder"));
    lblMessage_->setObjectName(QStringLiteral("lblMessage"));
    lblFileName_->setObjectName(QStringLiteral("lblFileName"));
    lblCount_->setObjectName(QStringLiteral("lblCount"));
    cmdCancel_->setObjectName(QStringLiteral("cmdCancel"));
    timer1_.setObjectName(QStringLiteral("Timer1"));
    progressBar_->setObjectName(QStringLiteral("ProgressBar"));
    progressBar_->setAccessibleName(QStringLiteral("Progress of the comparison"));
    progressBar_->setTextVisible(false);
    for (QLabel* label : {lblMessage_, lblFileName_, lblCount_}) label->setTextFormat(Qt::PlainText);
    // Its text is cut to the width there is; it must never ask for more.
    lblFileName_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    lblFileName_->setMinimumHeight(lblFileName_->fontMetrics().height());

    auto* layout = new QGridLayout(this);
    layout->addWidget(animFolder_, 0, 0, 1, 2, Qt::AlignCenter);
    layout->addWidget(lblMessage_, 1, 0, 1, 2);
    layout->addWidget(lblFileName_, 2, 0, 1, 2);
    layout->addWidget(progressBar_, 3, 0, 1, 2);
    layout->addWidget(lblCount_, 4, 0);
    layout->addWidget(cmdCancel_, 4, 1);
    layout->setColumnStretch(0, 1);
    layout->setRowStretch(5, 1);
    setMinimumWidth(60 * fontMetrics().averageCharWidth() + 80);

    // It comes of itself and takes the focus: keys meant for another window must not press its button.
    cmdCancel_->setAutoDefault(false);
    cmdCancel_->setFocusPolicy(Qt::NoFocus);
    connect(cmdCancel_, &QPushButton::clicked, this, &frmCompareProgress::reject);

    timer1_.setSingleShot(true);
    timer1_.setInterval(250);
}

frmCompareProgress::~frmCompareProgress() = default;

void frmCompareProgress::Show() {
    PaintValues();
    if (!isVisible()) painted_ = false;
    timer1_.start();
    if (!filtering_) qApp->installEventFilter(this);
    filtering_ = true;
    show();
    raise();
    activateWindow();
}

void frmCompareProgress::Unload() {
    if (filtering_) qApp->removeEventFilter(this);
    filtering_ = false;
    timer1_.stop();
    hide();
    animFolder_->Stop();
    animation_.clear();
    message_.clear();
    fileName_.clear();
    maximum_ = value_ = 0;
}

void frmCompareProgress::SetMessage(std::string_view text) {
    message_ = text;
    PaintSoon();
}

void frmCompareProgress::SetFileName(std::string_view text) {
    fileName_ = text;
    PaintSoon();
}

void frmCompareProgress::SetBarRange(std::int64_t maximum) {
    maximum_ = maximum;
    PaintSoon();
}

void frmCompareProgress::SetBarValue(std::int64_t value) {
    value_ = value;
    PaintSoon();
}

void frmCompareProgress::SetAnimation(std::string_view supportFile) {
    if (animation_ == supportFile) return;
    animation_ = supportFile;
    if (animation_.empty())
        animFolder_->Stop();
    else
        static_cast<void>(animFolder_->Open(files_, folders_.SupportFile(files_, animation_)));
}

void frmCompareProgress::PaintSoon() {
    if (paintPending_) return;
    paintPending_ = true;
    QMetaObject::invokeMethod(
        this, [this] { PaintValues(); }, Qt::QueuedConnection);
}

void frmCompareProgress::PaintValues() {
    paintPending_ = false;
    lblMessage_->setText(MessageQString(message_));
    PaintFileName();
    lblCount_->setText(CountText());
    // A bar without a range shows that something goes on, and not how far it has come.
    progressBar_->setMaximum(maximum_ > 0 ? kBarSteps : 0);
    if (maximum_ > 0) progressBar_->setValue(BarStep(value_, maximum_));
}

QString frmCompareProgress::CountText() const {
    const auto number = [this](std::int64_t count) {
        return ToQString(locale_.Number(Currency::FromWhole(count)));
    };
    if (maximum_ > 0)
        return QStringLiteral("%1 of %2")
            .arg(number(std::clamp<std::int64_t>(value_, 0, maximum_)), number(maximum_));
    return value_ > 0 ? QStringLiteral("%1 found").arg(number(value_)) : QString();
}

void frmCompareProgress::PaintFileName() {
    const QString whole = DisplayQString(fileName_);
    lblFileName_->setText(
        lblFileName_->fontMetrics().elidedText(whole, Qt::ElideMiddle, lblFileName_->contentsRect().width()));
}

void frmCompareProgress::paintEvent(QPaintEvent* event) {
    QDialog::paintEvent(event);
    painted_ = true;
}

void frmCompareProgress::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    PaintFileName();
}

void frmCompareProgress::WaitUntilPainted() {
    if (!isVisible() || !waits_) return;
    // Sleeps between the events, unlike a loop of yields. Timer1 stops when the window is unloaded, too.
    while (!painted_ && timer1_.isActive()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

// ESC and the close button end here.
void frmCompareProgress::reject() {
    loop_.RequestCancel();
    Unload();
}

bool frmCompareProgress::eventFilter(QObject* watched, QEvent* event) {
    // A question that stands over the run has its own use for the key.
    if (event->type() == QEvent::KeyPress && QApplication::activeModalWidget() == nullptr &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape && watched->isWidgetType()) {
        reject();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

}  // namespace vantrel

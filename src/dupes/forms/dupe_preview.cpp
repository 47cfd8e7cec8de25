#include "dupes/forms/dupe_preview.h"

#include <QBuffer>
#include <QImageReader>
#include <QLabel>
#include <QPlainTextEdit>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "filetools/forms/fixed_font.h"
#include "filetools/text_encoding.h"
#include "platform/forms/qt_text.h"

namespace vantrel {

namespace {

constexpr std::size_t kTextBytes = std::size_t{16} << 10;
constexpr std::uint64_t kPictureBytes = std::uint64_t{8} << 20;
constexpr qint64 kPicturePoints = 40'000'000;
constexpr int kShownPoints = 600;  // on a side

bool IsOrdinaryPicture(const QByteArray& format) {
    static const QList<QByteArray> kFormats{"png", "jpeg", "jpg", "gif", "bmp", "webp", "ico"};
    return kFormats.contains(format.toLower());
}

Error ReadBeginning(ReadFile& file, std::size_t wanted, std::string& content) {
    content.resize(wanted);
    std::size_t got = 0;
    Error error = file.ReadAt(0, content.data(), wanted, got);
    content.resize(error.IsOk() ? got : 0);
    return error;
}

}  // namespace

DupePreview::DupePreview(const FileSystem& files, QWidget* parent)
    : QWidget(parent),
      lblPicture(new QLabel(this)),
      txtText(new QPlainTextEdit(this)),
      lblAbout(new QLabel(this)),
      files_(files),
      pages_(new QStackedWidget(this)) {
    setObjectName(QStringLiteral("picPreview"));
    lblPicture->setObjectName(QStringLiteral("lblPicture"));
    lblPicture->setAlignment(Qt::AlignCenter);
    lblPicture->setTextFormat(Qt::PlainText);
    lblPicture->setWordWrap(true);
    lblPicture->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    txtText->setObjectName(QStringLiteral("txtPreview"));
    txtText->setAccessibleName(QStringLiteral("Beginning of the file"));
    txtText->setReadOnly(true);
    txtText->setLineWrapMode(QPlainTextEdit::NoWrap);
    txtText->setFont(FixedFont(0));
    txtText->setTabChangesFocus(true);
    txtText->setMinimumWidth(fontMetrics().averageCharWidth() * 12);
    lblAbout->setObjectName(QStringLiteral("lblAbout"));
    lblAbout->setTextFormat(Qt::PlainText);
    lblAbout->setWordWrap(true);
    pages_->addWidget(lblPicture);
    pages_->addWidget(txtText);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(pages_, 1);
    column->addWidget(lblAbout);
    ShowNothing();
}

void DupePreview::ShowNothing() {
    Say(QStringLiteral("No file is selected."));
    lblAbout->hide();
}

void DupePreview::Say(const QString& text) {
    picture_ = QImage();
    lblPicture->setPixmap({});
    lblPicture->setText(text);
    pages_->setCurrentWidget(lblPicture);
}

void DupePreview::ShowFile(const std::string& path, const QString& about) {
    lblAbout->setText(WithLineBreaks(about));
    lblAbout->setVisible(!about.isEmpty());
    ReadFile file;
    if (const Error error = files_.OpenForReading(path, file); !error.IsOk())
        return Say(DisplayQString(error.Description()));
    const std::uint64_t size = file.Seen().size;
    std::string content;
    if (Error error = ReadBeginning(file, kTextBytes, content); !error.IsOk())
        return Say(DisplayQString(error.Description()));
    QByteArray head = QByteArray::fromRawData(content.data(), static_cast<qsizetype>(content.size()));
    QBuffer buffer(&head);
    buffer.open(QIODevice::ReadOnly);
    const bool isPicture = IsOrdinaryPicture(QImageReader::imageFormat(&buffer));
    if (isPicture && size <= kPictureBytes) {
        if (ReadBeginning(file, static_cast<std::size_t>(size), content).IsOk() && ShowPicture(content))
            return;
        return Say(QStringLiteral("The picture cannot be shown."));
    }
    if (isPicture) return Say(QStringLiteral("The picture is too large for a preview."));
    const bool isWhole = content.size() == size;
    // No character that is cut in two.
    for (int cut = 0; !isWhole && cut < 4 && !content.empty() && (content.back() & 0x80) != 0; ++cut)
        content.pop_back();
    ShowText(content, isWhole);
}

bool DupePreview::ShowPicture(const std::string& content) {
    QByteArray bytes = QByteArray::fromRawData(content.data(), static_cast<qsizetype>(content.size()));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setAutoTransform(true);
    QSize size = reader.size();
    if (!size.isValid() || qint64{size.width()} * size.height() > kPicturePoints) return false;
    if (std::max(size.width(), size.height()) > kShownPoints)
        reader.setScaledSize(size.scaled(kShownPoints, kShownPoints, Qt::KeepAspectRatio));
    picture_ = reader.read();
    if (picture_.isNull()) return false;
    lblPicture->setText({});
    pages_->setCurrentWidget(lblPicture);
    FitPicture();
    return true;
}

void DupePreview::FitPicture() {
    if (picture_.isNull()) return;
    const qreal scale = devicePixelRatioF();
    const QSize room = (QSizeF(pages_->size()) * scale).toSize();
    QSize wanted = picture_.size();
    if (wanted.width() > room.width() || wanted.height() > room.height())
        wanted = wanted.scaled(room, Qt::KeepAspectRatio);
    QPixmap shown = QPixmap::fromImage(
        picture_.scaled(wanted.expandedTo({1, 1}), Qt::KeepAspectRatio, Qt::SmoothTransformation));
    shown.setDevicePixelRatio(scale);
    lblPicture->setPixmap(shown);
}

void DupePreview::ShowText(const std::string& content, bool isWhole) {
    if (content.empty()) return Say(QStringLiteral("The file is empty."));
    ByteScan scan;
    scan.Add(content);
    const CancelCheck never = [] {};
    const EncodingGuess guess = GuessEncoding(content, scan, never);
    if (guess.isBinary) return Say(QStringLiteral("There is no preview of this kind of file."));
    QString text =
        ToQString(DecodeToUtf8(std::string_view(content).substr(guess.markLength), guess.encoding, never));
    if (!isWhole) text += QStringLiteral("\n...");
    picture_ = QImage();
    txtText->setPlainText(text);
    pages_->setCurrentWidget(txtText);
}

void DupePreview::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    FitPicture();
}

QSize DupePreview::sizeHint() const {
    return {fontMetrics().averageCharWidth() * 32, fontMetrics().lineSpacing() * 10};
}

}  // namespace vantrel

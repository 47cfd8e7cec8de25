#include "platform/forms/access_keys.h"

#include <QAbstractButton>
#include <QLabel>
#include <QList>

namespace vantrel {
namespace {

// The place behind the mark; -1 where none is marked. Two marks are a "&" that is shown.
qsizetype MarkedAt(const QString& caption) {
    for (qsizetype at = 0; at + 1 < caption.size(); ++at) {
        if (caption[at] != QLatin1Char('&')) continue;
        if (caption[at + 1] != QLatin1Char('&')) return at + 1;
        ++at;
    }
    return -1;
}

QString CaptionOf(const QWidget& widget) {
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) return button->text();
    const auto* label = qobject_cast<const QLabel*>(&widget);
    return label != nullptr && label->buddy() != nullptr ? label->text() : QString();
}

void SetCaption(QWidget& widget, const QString& caption) {
    if (auto* button = qobject_cast<QAbstractButton*>(&widget))
        button->setText(caption);
    else if (auto* label = qobject_cast<QLabel*>(&widget))
        label->setText(caption);
}

// The first letters and digits of words first, then all others.
QList<qsizetype> CandidatesOf(const QString& caption) {
    QList<qsizetype> first, others;
    for (qsizetype at = 0; at < caption.size(); ++at) {
        if (!caption[at].isLetterOrNumber()) continue;
        const bool begins = at == 0 || !caption[at - 1].isLetterOrNumber();
        (begins ? first : others).append(at);
    }
    return first + others;
}

}  // namespace

QSet<QChar> AccessKeysOf(const QWidget& window) {
    QSet<QChar> keys;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        const QString caption = CaptionOf(*widget);
        if (const qsizetype at = MarkedAt(caption); at >= 0) keys.insert(caption[at].toUpper());
    }
    return keys;
}

void GiveAccessKeys(QWidget& window, QSet<QChar> taken) {
    taken |= AccessKeysOf(window);
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        QString caption = CaptionOf(*widget);
        if (caption.isEmpty() || MarkedAt(caption) >= 0) continue;
        for (const qsizetype at : CandidatesOf(caption)) {
            if (taken.contains(caption[at].toUpper())) continue;
            taken.insert(caption[at].toUpper());
            SetCaption(*widget, caption.insert(at, QLatin1Char('&')));
            break;
        }
    }
}

}  // namespace vantrel

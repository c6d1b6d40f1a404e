#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QTimer>

#include <functional>

// Answers for modal windows (confirmations, dialogs), which block the test until closed.
namespace ModalAnswers {

// Runs answer on the next modal window as soon as it shows.
inline void whenModalAppears(std::function<void(QWidget*)> answer)
{
    auto* poll = new QTimer;
    QObject::connect(poll, &QTimer::timeout, poll, [poll, answer = std::move(answer)] {
        if (QWidget* modal = QApplication::activeModalWidget()) {
            poll->stop();
            poll->deleteLater();
            answer(modal);
        }
    });
    poll->start(10);
}

inline void clickButtonNamed(QWidget* dialog, const QString& text)
{
    for (QAbstractButton* button : dialog->findChildren<QAbstractButton*>()) {
        if (button->text() == text) {
            button->click();
            return;
        }
    }
    qFatal("no button %s", qPrintable(text));
}

} // namespace ModalAnswers

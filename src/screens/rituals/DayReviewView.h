#pragma once

#include "screens/rituals/RitualDay.h"

#include <QDialog>

class AppServices;
class QCheckBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QVBoxLayout;

// The end of the day: what was ticked, the meets and what is left, and a summary the user may
// edit before "Write to the logbook" adds it to the day's entry of each chosen project. What the
// entries already hold stays as it was.
class DayReviewView final : public QDialog {
    Q_OBJECT

public:
    DayReviewView(const AppServices& services, const QDate& day, QWidget* parent = nullptr);

    void reload();
    const RitualDay& day() const { return m_day; }
    bool isLoading() const { return m_isLoading; }
    QPlainTextEdit* summaryEditor() const { return m_summary; }
    QPushButton* writeButton() const { return m_write; }
    QLabel* notice() const { return m_notice; }
    QList<QCheckBox*> projectChoices() const { return m_projectChoices; }

    // Adds the editor's text to the entries of the chosen projects.
    void writeToLogbook();

Q_SIGNALS:
    void loaded();
    // After a write, with how many entries took the summary.
    void written(int count);

private:
    void present(const RitualDay& day);

    const AppServices& m_services;
    RitualDay m_day;
    bool m_isLoading = false;
    quint64 m_generation = 0;
    QLabel* m_title;
    QLabel* m_done;
    QLabel* m_completed;
    QLabel* m_meets;
    QLabel* m_left;
    QPlainTextEdit* m_summary;
    QVBoxLayout* m_projects;
    QList<QCheckBox*> m_projectChoices;
    QPushButton* m_write;
    QLabel* m_notice;
};

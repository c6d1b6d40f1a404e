#include "screens/settings/CsvMappingDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPushButton>

CsvMappingDialog::CsvMappingDialog(const QStringList& header, const QList<Target>& targets, QWidget* parent)
    : QDialog(parent)
    , m_targets(targets)
{
    setObjectName(QStringLiteral("csvMappingDialog"));
    //% "Import tasks from CSV"
    setWindowTitle(qtTrId("data-settings-csv-mapping-title"));
    const CsvTaskImport::Mapping guessed = CsvTaskImport::guess(header);
    m_title = columnChooser(header, guessed.title, QStringLiteral("titleColumn"));
    m_done = columnChooser(header, guessed.done, QStringLiteral("doneColumn"));
    m_due = columnChooser(header, guessed.due, QStringLiteral("dueColumn"));
    m_quadrant = columnChooser(header, guessed.quadrant, QStringLiteral("quadrantColumn"));
    m_list = new QComboBox(this);
    m_list->setObjectName(QStringLiteral("targetList"));
    for (const Target& target : targets)
        m_list->addItem(target.label);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    auto* form = new QFormLayout(this);
    //% "Title"
    form->addRow(qtTrId("data-settings-csv-title-column"), m_title);
    //% "Done"
    form->addRow(qtTrId("data-settings-csv-done-column"), m_done);
    //% "Due date"
    form->addRow(qtTrId("data-settings-csv-due-column"), m_due);
    //% "Quadrant"
    form->addRow(qtTrId("data-settings-csv-quadrant-column"), m_quadrant);
    //% "Into the list"
    form->addRow(qtTrId("data-settings-csv-target-list"), m_list);
    form->addRow(buttons);

    auto updateOk = [this, buttons] {
        buttons->button(QDialogButtonBox::Ok)->setEnabled(m_title->currentData().toInt() >= 0 && m_list->count() > 0);
    };
    connect(m_title, &QComboBox::currentIndexChanged, this, updateOk);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    updateOk();
}

QComboBox* CsvMappingDialog::columnChooser(const QStringList& header, int guessed, const QString& name)
{
    auto* chooser = new QComboBox(this);
    chooser->setObjectName(name);
    //% "(none)"
    chooser->addItem(qtTrId("data-settings-csv-no-column"), -1);
    for (int i = 0; i < header.size(); ++i)
        chooser->addItem(header.at(i), i);
    chooser->setCurrentIndex(chooser->findData(guessed));
    return chooser;
}

CsvTaskImport::Mapping CsvMappingDialog::mapping() const
{
    return {m_title->currentData().toInt(), m_done->currentData().toInt(), m_due->currentData().toInt(),
        m_quadrant->currentData().toInt()};
}

TaskListEntity CsvMappingDialog::target() const
{
    return m_targets.value(m_list->currentIndex()).list;
}

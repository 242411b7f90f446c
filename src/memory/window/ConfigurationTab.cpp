#include "ConfigurationTab.h"

#include <QGridLayout>
#include <QPushButton>

#include "Naming.h"

namespace {

QPushButton* makeButton(const QString& systemName, const QString& caption, const QString& toolTip) {
    auto* const button = named(new QPushButton(caption), systemName, caption);
    button->setToolTip(toolTip);
    button->setAccessibleDescription(toolTip);
    button->setEnabled(false);
    return button;
}

}  // namespace

ConfigurationTab::ConfigurationTab(QWidget* parent)
    : QWidget(parent),
      SaveConfig(makeButton(QStringLiteral("SaveConfig"), QStringLiteral("Save VLX Configuration"),
                            QStringLiteral("Read the amplifier's configuration and save it to a file"))),
      RestoreConfig(makeButton(
          QStringLiteral("RestoreConfig"), QStringLiteral("Restore VLX Configuration"),
          QStringLiteral("Write a saved configuration file back to the amplifier, which then restarts"))),
      DisplayFaultTable(makeButton(
          QStringLiteral("DisplayFaultTable"), QStringLiteral("Display Fault Table"),
          QStringLiteral("List the faults that the amplifier has recorded, and save the list to a file"))),
      EditBannerButton(makeButton(
          QStringLiteral("EditBannerButton"), QStringLiteral("Edit Power On Banner"),
          QStringLiteral("Change the text of up to 8 characters that the amplifier shows at power-on"))) {
    setObjectName(QStringLiteral("ConfigurationTab"));
    auto* const grid = new QGridLayout(this);
    grid->addWidget(SaveConfig, 1, 1);
    grid->addWidget(RestoreConfig, 1, 2);
    grid->addWidget(DisplayFaultTable, 2, 1);
    grid->addWidget(EditBannerButton, 2, 2);
    grid->setSpacing(16);
    const QList<QPushButton*> buttons{SaveConfig, RestoreConfig, DisplayFaultTable, EditBannerButton};
    QSize size;
    for (const QPushButton* const button : buttons)
        size = size.expandedTo(button->sizeHint());
    for (QPushButton* const button : buttons)
        button->setMinimumSize(size.width() * 5 / 4, size.height() * 3 / 2);
    for (const int edge : {0, 3}) {
        grid->setColumnStretch(edge, 1);
        grid->setRowStretch(edge, 1);
    }

    connect(SaveConfig, &QPushButton::clicked, this, &ConfigurationTab::SaveConfig_Action);
    connect(RestoreConfig, &QPushButton::clicked, this, &ConfigurationTab::RestoreConfig_Action);
    connect(DisplayFaultTable, &QPushButton::clicked, this, &ConfigurationTab::DisplayFaultTable_Action);
    connect(EditBannerButton, &QPushButton::clicked, this, &ConfigurationTab::EditBannerButton_Action);
}

void ConfigurationTab::enableTools(bool enabled) {
    for (QPushButton* const button : {EditBannerButton, SaveConfig, RestoreConfig, DisplayFaultTable})
        button->setEnabled(enabled);
}

void ConfigurationTab::setEditBannerButtonEnabled(bool enabled) {
    EditBannerButton->setEnabled(enabled);
}

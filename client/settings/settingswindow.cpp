// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "settings/settingswindow.h"

#include <utility>

#include <QTimer>

#include <DialogHelperWidget>
#include <MButton>
#include <MLabel>
#include <MLayout>
#include <MLinearLayoutPolicy>
#include <MWidgetController>
#include <NfcAdapter>
#include <NfcPendingCall>
#include <NfcSettingsView>
#include <SimpleCheckBoxLabel>

#include "core/inputdelay.h"
#include "settings/applicationspanel.h"
#include "settings/clientstatus.h"
#include "settings/defaultapplications.h"
#include "settings/storedswitch.h"

using ConnUi::DialogHelperWidget;
using ConnUi::NfcAdapter;
using ConnUi::NfcPendingCall;
using ConnUi::NfcSettingsView;
using ConnUi::SimpleCheckBoxLabel;
using ConnUi::SimpleSheet;

namespace {

// A daemon that is there has answered by then: its switch does not move under the user's finger.
constexpr int patience = 500; // milliseconds

// The view shows its switches in rows and does not hand them out.
MButton *confirmationButton(const QGraphicsWidget *view)
{
    const QList<QGraphicsItem *> rows = view->childItems();
    for (QGraphicsItem *item : rows) {
        const auto *row = qobject_cast<SimpleCheckBoxLabel *>(item->toGraphicsObject());
        if (!row || row->text() != qtTrId("qtn_nfc_sett_confs"))
            continue;
        const QList<QGraphicsItem *> parts = row->childItems();
        for (QGraphicsItem *part : parts)
            if (auto *button = qobject_cast<MButton *>(part->toGraphicsObject()))
                return button;
    }
    return nullptr;
}

// Some users need more time to see what they are asked.
SimpleCheckBoxLabel *newDelayRow()
{
    auto *button = new MButton;
    auto *row = new SimpleCheckBoxLabel(button, qtTrId("qtn_nfc_sett_more_time"), MButton::switchType);
    QObject::connect(button, &MButton::toggled, button, &setInputDelayLonger);
    new StoredSwitch(button, &isInputDelayLonger, row);
    return row;
}

MWidgetController *newExplanation()
{
    auto *text = new MLabel(qtTrId("qtn_nfc_sett_about"));
    text->setStyleName(QStringLiteral("CommonSubTitle"));
    text->setWordWrap(true);
    auto *panel = new MWidgetController;
    panel->setStyleName(QStringLiteral("CommonPanel"));
    auto *policy = new MLinearLayoutPolicy(new MLayout(panel), Qt::Vertical);
    policy->addItem(text);
    return panel;
}

ApplicationsPanel *newApplications()
{
    auto *panel = new ApplicationsPanel;
    const auto *applications = new DefaultApplications(panel);
    QObject::connect(applications, &DefaultApplications::changed, panel, &ApplicationsPanel::list);
    return panel;
}

} // namespace

SettingsWindow::SettingsWindow()
{
    const QString title = qtTrId("qtn_nfc_settings_tit");
    setWindowTitle(title);
    page.setTitle(title);
    page.setRejectButtonText(qtTrId("qtn_comm_command_done"));
    page.appear(this);
    connect(&page, &SimpleSheet::disappeared, this, &SettingsWindow::close);
}

SettingsWindow::~SettingsWindow() = default;

void SettingsWindow::enterDisplayEvent()
{
    // Not before the window has been painted.
    if (!adapter)
        QTimer::singleShot(0, this, &SettingsWindow::bind);
}

void SettingsWindow::bind()
{
    if (adapter)
        return;
    adapter.reset(NfcAdapter::defaultAdapterAsync());
    connect(adapter.get(), &NfcAdapter::adapterValid, this, [this] {
        connect(adapter->isPoweredAsync(), &NfcPendingCall::finished, this, &SettingsWindow::showSettings);
    });
    QTimer::singleShot(patience, this, &SettingsWindow::showSettings);
}

void SettingsWindow::showSettings()
{
    if (std::exchange(showsSettings, true))
        return;
    auto *view = new NfcSettingsView(adapter.get());
    if (MButton *confirmations = confirmationButton(view))
        new StoredSwitch(
            confirmations, [adapter = adapter.get()] { return adapter->isConfirmationEnabled(); }, view);
    auto *content = new MWidget;
    auto *policy = new MLinearLayoutPolicy(new MLayout(content), Qt::Vertical);
    policy->addItem(view);
    policy->addItem(newDelayRow());
    policy->addItem(newExplanation());
    policy->addItem(new ClientStatus);
    policy->addItem(newApplications());
    page.setCentralWidget(new DialogHelperWidget(content));
}

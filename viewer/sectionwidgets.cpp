// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "sectionwidgets.h"

#include <algorithm>

#include <QGraphicsWidget>

#include <MButton>
#include <MLabel>
#include <MLayout>
#include <MLinearLayoutPolicy>
#include <MWidget>

#include "contactcard.h"
#include "contactsfolder.h"
#include "section.h"

namespace {

constexpr qsizetype mostSections = 50;
constexpr qsizetype mostCharacters = 20000;
constexpr qsizetype mostBytes = 256;

MLabel *newLabel(const QString &text, const char *style)
{
    auto *label = new MLabel(text);
    label->setStyleName(QLatin1String(style));
    label->setWordWrap(true);
    return label;
}

// For a text that somebody else wrote.
MLabel *newForeignLabel(const QString &text)
{
    const bool isCut = text.size() > mostCharacters;
    auto *label = newLabel(isCut ? text.left(mostCharacters) + QStringLiteral("…") : text, "MLabel");
    label->setForeignText(true);
    label->setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    return label;
}

QString hex(const QByteArray &data)
{
    const QString bytes = QString::fromLatin1(data.left(mostBytes).toHex(' '));
    return data.size() > mostBytes ? bytes + QStringLiteral(" …") : bytes;
}

void addDetail(MLinearLayoutPolicy *policy, const char *label, const QString &value)
{
    auto *pair = new MWidget;
    auto *layout = new MLayout(pair);
    auto *pairPolicy = new MLinearLayoutPolicy(layout, Qt::Vertical);
    pairPolicy->setSpacing(0);
    pairPolicy->addItem(newLabel(qtTrId(label), "CommonSubTitle"));
    pairPolicy->addItem(newForeignLabel(value));
    policy->addItem(pair);
}

void addSaveButton(MLinearLayoutPolicy *policy, const QByteArray &card, const QString &name)
{
    auto *button = new MButton(qtTrId("qtn_nfc_viewer_save"));
    QObject::connect(button, &MButton::clicked, button, [button, card, name] {
        const bool isSaved = !ContactsFolder::save(card, name).isEmpty();
        button->setText(isSaved ? qtTrId("qtn_nfc_viewer_saved") : qtTrId("qtn_nfc_viewer_not_saved"));
        button->setEnabled(!isSaved);
    });
    policy->addItem(button);
}

void addContactCard(MLinearLayoutPolicy *policy, const QByteArray &card)
{
    const QString name = cardName(card);
    policy->addItem(newLabel(qtTrId("qtn_nfc_viewer_contact"), "CommonTitle"));
    if (!name.isEmpty())
        policy->addItem(newForeignLabel(name));
    const QList<CardDetail> details = cardDetails(card);
    for (const CardDetail &detail : details)
        addDetail(policy, detail.label, detail.value);
    addSaveButton(policy, card, name);
}

void addData(MLinearLayoutPolicy *policy, const Section &section)
{
    policy->addItem(newLabel(qtTrId("qtn_nfc_viewer_data"), "CommonTitle"));
    addDetail(policy, "qtn_nfc_viewer_type", section.text);
    addDetail(policy, "qtn_nfc_viewer_bytes", hex(section.payload));
}

void addSection(MLinearLayoutPolicy *policy, const Section &section)
{
    switch (section.kind) {
    case Section::Text:
        policy->addItem(newLabel(qtTrId("qtn_nfc_viewer_text"), "CommonTitle"));
        policy->addItem(newForeignLabel(section.text));
        break;
    case Section::Link:
        policy->addItem(newLabel(qtTrId("qtn_nfc_viewer_link"), "CommonTitle"));
        policy->addItem(newForeignLabel(section.text));
        break;
    case Section::ContactCard:
        addContactCard(policy, section.payload);
        break;
    case Section::Data:
        addData(policy, section);
        break;
    }
}

} // namespace

QGraphicsWidget *newSectionWidgets(const QList<Section> &sections)
{
    auto *widget = new MWidget;
    auto *layout = new MLayout(widget);
    auto *policy = new MLinearLayoutPolicy(layout, Qt::Vertical);
    if (sections.isEmpty())
        policy->addItem(newLabel(qtTrId("qtn_nfc_viewer_nothing"), "CommonQueryText"));
    for (const Section &section : sections.first(std::min(sections.size(), mostSections)))
        addSection(policy, section);
    const qsizetype more = sections.size() - mostSections;
    if (more > 0)
        policy->addItem(newLabel(qtTrId("qtn_nfc_viewer_more", int(more)).arg(more), "CommonQueryText"));
    return widget;
}

// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/nfcfilereceivesheet_p.h"

#include <algorithm>
#include <limits>

#include <QAccessible>
#include <QGraphicsLinearLayout>
#include <QLocale>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTime>

#include <DialogHelperWidget>
#include <MButton>
#include <MImageWidget>
#include <MLabel>
#include <MProgressIndicator>
#include <MWidgetController>

#include "nfcfilereceivesheet.h"

namespace ConnUi {

namespace {

constexpr qsizetype mostSpeeds = 10;
constexpr qsizetype leastForMedian = 3;

// A count in the unit that suits it, and the other count in the same unit.
struct Size
{
    quint64 transferred;
    quint64 total;
    const char *unit;
};

// Decimal units, cut off; what has arrived alone decides which.
Size inUnit(quint64 transferred, quint64 total)
{
    const quint64 kilobytes = transferred / 1000;
    const quint64 totalKilobytes = total / 1000;
    if (kilobytes > 1000000)
        return {kilobytes / 1000000, totalKilobytes / 1000000, "qtn_comm_gigabytes"};
    if (kilobytes > 1000)
        return {kilobytes / 1000, totalKilobytes / 1000, "qtn_comm_megabytes"};
    return {kilobytes, totalKilobytes, "qtn_comm_kilobytes"};
}

// Beyond what 32 bits hold the estimate stands still.
int truncated(float milliseconds)
{
    constexpr float tooLong = 2147483648.0F;
    return milliseconds < tooLong ? int(milliseconds) : std::numeric_limits<int>::max();
}

// Both counts in numbers that a progress bar can hold, in the same ratio.
void showProgress(MProgressIndicator *bar, const Size &size)
{
    constexpr quint64 most = std::numeric_limits<int>::max();
    const quint64 larger = std::max({size.transferred, size.total, quint64(1)});
    const quint64 divisor = (larger - 1) / most + 1;
    bar->setMinimum(0);
    bar->setMaximum(int(size.total / divisor));
    bar->setValue(int(size.transferred / divisor));
}

QGraphicsLinearLayout *newLayout(Qt::Orientation orientation)
{
    auto *layout = new QGraphicsLinearLayout(orientation);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    return layout;
}

MWidgetController *newPanel(const QString &style, QGraphicsLinearLayout *layout)
{
    auto *panel = new MWidgetController;
    panel->setStyleName(style);
    panel->setLayout(layout);
    return panel;
}

MLabel *newLabel(const QString &style)
{
    auto *label = new MLabel;
    label->setStyleName(style);
    return label;
}

} // namespace

NfcFileReceiveSheetPrivate::NfcFileReceiveSheetPrivate(NfcFileReceiveSheet *sheet) : sheet(sheet) {}

QGraphicsWidget *NfcFileReceiveSheetPrivate::createContent()
{
    cancelButton = new MButton(qtTrId("qtn_comm_cancel"));
    cancelButton->setStyleName(QStringLiteral("CommonSingleButton"));
    QObject::connect(cancelButton, &MButton::clicked, sheet, &NfcFileReceiveSheet::transferCanceled);

    auto *layout = newLayout(Qt::Vertical);
    layout->addItem(newFilePanel());
    layout->addItem(newProgressPanel());
    layout->addItem(newTimePanel());
    layout->addItem(cancelButton);
    layout->setAlignment(cancelButton, Qt::AlignCenter);

    auto *content = new MWidget;
    content->setLayout(layout);
    return new DialogHelperWidget(content);
}

MWidgetController *NfcFileReceiveSheetPrivate::newFilePanel()
{
    senderLabel = newLabel(QStringLiteral("CommonTitle"));
    senderLabel->setTextElide(true);
    fileNameLabel = newLabel(QStringLiteral("CommonSubTitle"));
    fileNameLabel->setTextElide(true);
    fileNameLabel->setAlignment(Qt::AlignLeft);
    sizeLabel = newLabel(QStringLiteral("CommonItemInfo"));
    sizeLabel->setAlignment(Qt::AlignRight);

    auto *row = newLayout(Qt::Horizontal);
    row->addItem(fileNameLabel);
    row->addStretch(1);
    row->addItem(sizeLabel);

    auto *layout = newLayout(Qt::Vertical);
    layout->addItem(senderLabel);
    layout->addItem(row);
    return newPanel(QStringLiteral("CommonPanel"), layout);
}

MWidgetController *NfcFileReceiveSheetPrivate::newProgressPanel()
{
    thumbnail = new MImageWidget;
    thumbnail->setStyleName(QStringLiteral("CommonThumbnail"));
    progress = new MProgressIndicator;
    progress->setAccessibleName(qtTrId("qtn_nfc_receive_tit"));
    progress->setStyleName(QStringLiteral("CommonProgressBarInverted"));

    auto *row = newLayout(Qt::Horizontal);
    row->addItem(thumbnail);
    row->setStretchFactor(thumbnail, 0);
    row->addItem(progress);
    row->setStretchFactor(progress, 1);
    row->setAlignment(progress, Qt::AlignVCenter);
    return newPanel(QStringLiteral("CommonPanel"), row);
}

MWidgetController *NfcFileReceiveSheetPrivate::newTimePanel()
{
    timeLabel = newLabel(QStringLiteral("CommonSubTitle"));
    timeLabel->setAlignment(Qt::AlignTop);
    timeLabel->setWordWrap(true);

    auto *row = newLayout(Qt::Horizontal);
    row->addItem(timeLabel);
    return newPanel(QStringLiteral("CommonSmallPanel"), row);
}

void NfcFileReceiveSheetPrivate::showSize(quint64 transferred, quint64 total)
{
    const Size size = inUnit(transferred, total);
    const QString all = qtTrId(size.unit).arg(size.total);
    sizeLabel->setText(QStringLiteral("%L1/%2").arg(size.transferred).arg(all));
    if (QAccessible::isActive())
        sizeLabel->setAccessibleName(qtTrId("qtn_nfc_receive_amount").arg(size.transferred).arg(all));
    showProgress(progress, size);
}

void NfcFileReceiveSheetPrivate::estimate(quint64 transferred, quint64 total)
{
    const quint64 before = previous;
    previous = transferred;
    if (before == 0) {
        interval.start();
        return;
    }
    addReport(interval.restart(), before, transferred, total);
}

void NfcFileReceiveSheetPrivate::addReport(qint64 elapsed, quint64 before, quint64 transferred, quint64 total)
{
    if (elapsed < 1 || transferred <= before)
        return;
    const float speed = calculateMedianSpeed(float(transferred - before) / float(elapsed));
    const quint64 remaining = total > transferred ? total - transferred : 0;
    setTimeRemaining(QTime(0, 0).addMSecs(truncated(float(remaining) / speed)));
}

float NfcFileReceiveSheetPrivate::calculateMedianSpeed(float speed)
{
    if (speeds.size() >= mostSpeeds)
        speeds.removeFirst();
    speeds.append(speed);
    if (speeds.size() < leastForMedian)
        return speed;

    QList<float> sorted = speeds;
    std::sort(sorted.begin(), sorted.end());
    return sorted.at(sorted.size() / 2);
}

void NfcFileReceiveSheetPrivate::setTimeRemaining(const QTime &time)
{
    if (!time.isValid()) {
        qWarning("NfcFileReceiveSheet: Invalid time");
        return;
    }
    const QString format = time.hour() < 1 ? QStringLiteral("mm:ss") : QStringLiteral("h:mm:ss");
    const QString text = qtTrId("qtn_nfc_receive_time_remaining");
    timeLabel->setText(text.arg(time.toString(format)));
    if (QAccessible::isActive())
        timeLabel->setAccessibleName(text.arg(spokenDuration(time)));
}

QString NfcFileReceiveSheetPrivate::spokenDuration(const QTime &time)
{
    QStringList parts;
    if (time.hour() > 0)
        parts.append(qtTrId("qtn_nfc_hours", time.hour()));
    if (time.minute() > 0)
        parts.append(qtTrId("qtn_nfc_minutes", time.minute()));
    if (time.hour() == 0 && (time.second() > 0 || parts.isEmpty()))
        parts.append(qtTrId("qtn_nfc_seconds", time.second()));
    return QLocale().createSeparatedList(parts);
}

} // namespace ConnUi

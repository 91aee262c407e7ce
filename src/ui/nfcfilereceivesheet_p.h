// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCFILERECEIVESHEET_P_H
#define CONNUI_NFCFILERECEIVESHEET_P_H

#include <QElapsedTimer>
#include <QList>
#include <QTime>

class MButton;
class MImageWidget;
class MLabel;
class MProgressIndicator;
class MWidgetController;
class QGraphicsWidget;

namespace ConnUi {

class NfcFileReceiveSheet;

class NfcFileReceiveSheetPrivate
{
public:
    explicit NfcFileReceiveSheetPrivate(NfcFileReceiveSheet *sheet);

    QGraphicsWidget *createContent();
    void showSize(quint64 transferred, quint64 total);
    void estimate(quint64 transferred, quint64 total);
    void addReport(qint64 elapsed, quint64 before, quint64 transferred, quint64 total);
    float calculateMedianSpeed(float speed);
    void setTimeRemaining(const QTime &time);
    /** Returns \a time in words: digits with colons between them would be spoken as a time of day. */
    static QString spokenDuration(const QTime &time);

    NfcFileReceiveSheet *sheet;
    MLabel *senderLabel = nullptr;
    MLabel *fileNameLabel = nullptr;
    MLabel *sizeLabel = nullptr;
    MLabel *timeLabel = nullptr;
    MProgressIndicator *progress = nullptr;
    MImageWidget *thumbnail = nullptr;
    MButton *cancelButton = nullptr;
    quint64 previous = 0;
    QElapsedTimer interval;
    QList<float> speeds; // bytes per millisecond, oldest first

private:
    MWidgetController *newFilePanel();
    MWidgetController *newProgressPanel();
    MWidgetController *newTimePanel();
};

} // namespace ConnUi

#endif

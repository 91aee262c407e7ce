// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MPROGRESSINDICATOR_H
#define MPROGRESSINDICATOR_H

#include <memory>

#include <MWidgetController>

class MProgressIndicatorPrivate;

/** Shows the progress of an activity, or only that it is in progress. */
class QUENZOTOUCHCORE_EXPORT MProgressIndicator : public MWidgetController
{
    Q_OBJECT
    Q_PROPERTY(ViewType viewType READ viewType WRITE setViewType)
    Q_PROPERTY(int minimum READ minimum WRITE setMinimum)
    Q_PROPERTY(int maximum READ maximum WRITE setMaximum)
    Q_PROPERTY(int value READ value WRITE setValue)
public:
    /** How an indicator looks. */
    enum ViewType {
        barType,     ///< A bar that fills from minimum to maximum
        spinnerType, ///< A ring that turns, whatever the value
    };
    Q_ENUM(ViewType)

    /** Makes an indicator from 0 to 100 inside \a parent, which then owns it. */
    explicit MProgressIndicator(QGraphicsItem *parent = nullptr, ViewType type = barType);
    ~MProgressIndicator() override;

    /** Returns how the indicator looks. */
    ViewType viewType() const;
    /** Sets how the indicator looks. */
    void setViewType(ViewType type);

    /** Returns the value at which the bar is empty. */
    int minimum() const;
    /** Sets the value at which the bar is empty. A smaller maximum or value follows. */
    void setMinimum(int minimum);

    /** Returns the value at which the bar is full. */
    int maximum() const;
    /**
     * Sets the value at which the bar is full. A greater minimum or value follows. A bar whose maximum equals
     * its minimum stays empty.
     */
    void setMaximum(int maximum);

    /** Returns the progress. */
    int value() const;
    /** Sets the progress; a value outside of the range is taken to its nearer end. */
    void setValue(int value);

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget = nullptr) override;

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    const std::unique_ptr<MProgressIndicatorPrivate> d;
};

#endif

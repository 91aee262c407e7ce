// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mdialog.h"

#include <algorithm>
#include <utility>

#include <QCoreApplication>
#include <QEvent>
#include <QGraphicsLinearLayout>
#include <QKeyEvent>
#include <QRegularExpression>

#include <MButton>
#include <MImageWidget>
#include <MLabel>
#include <MProgressIndicator>

#include "scene/mdialog_p.h"
#include "scene/mscenewindow_p.h"
#include "theme/mpaint_p.h"
#include "theme/mtheme_p.h"
#include "widgets/mbutton_p.h"
#include "widgets/mscrollarea_p.h"

namespace {

struct Standard
{
    M::StandardButton button;
    M::ButtonRole role;
    const char *text; ///< Translated by Qt's own catalogues
};

// In the order in which a dialog lists them.
constexpr Standard standardButtons[] = {
    {M::OkButton, M::AcceptRole, QT_TRANSLATE_NOOP("QPlatformTheme", "OK")},
    {M::YesButton, M::YesRole, QT_TRANSLATE_NOOP("QPlatformTheme", "&Yes")},
    {M::NoButton, M::NoRole, QT_TRANSLATE_NOOP("QPlatformTheme", "&No")},
    {M::CancelButton, M::RejectRole, QT_TRANSLATE_NOOP("QPlatformTheme", "Cancel")},
};

// The share of what is seen of the body that an arrow key scrolls.
constexpr qreal lineStep = 0.2;
// The share that the buttons may take of a screen that is too small for all of them.
constexpr qreal buttonShare = 0.6;
// The share of the width that they may take beside the contents.
constexpr qreal besideShare = 0.45;

QString withoutMnemonic(QString text)
{
    static const QRegularExpression mnemonic(QStringLiteral("\\(&.\\)|&"));
    return text.remove(mnemonic);
}

QGraphicsLinearLayout *plainLayout(Qt::Orientation orientation, qreal spacing)
{
    auto *layout = new QGraphicsLinearLayout(orientation);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    return layout;
}

bool isDismissal(const MButtonModel *model)
{
    return model->role() == M::RejectRole || model->role() == M::NoRole;
}

bool isPrimary(const MButtonModel *model)
{
    return model->role() == M::AcceptRole || model->role() == M::YesRole;
}

} // namespace

MDialogPrivate::MDialogPrivate(MDialog *dialog)
    : q(dialog)
    , card(new MWidgetController(dialog))
    , body(new MWidget)
    , bodyArea(new MScrollArea(body, card))
    , buttonBox(new MWidget)
    , buttonArea(new MScrollArea(buttonBox, card))
    , headIcon(new MImageWidget(body))
    , titleBar(new MWidgetController(body))
    , titleIcon(new MImageWidget(titleBar))
    , titleLabel(new MLabel(titleBar))
    , spinner(new MProgressIndicator(titleBar, MProgressIndicator::spinnerType))
    , balance(new MWidgetController(titleBar))
{}

void MDialogPrivate::build(const QString &title, M::StandardButtons standard)
{
    headIcon->setStyleName(QStringLiteral("CommonQueryIcon"));
    titleBar->setStyleName(QStringLiteral("MDialogTitleBar"));
    titleIcon->setStyleName(QStringLiteral("MDialogTitleIcon"));
    titleLabel->setStyleName(QStringLiteral("MDialogTitle"));
    titleLabel->setText(title);
    balance->setStyleName(QStringLiteral("MDialogTitleBalance"));
    for (const Standard &known : standardButtons) {
        if (standard & known.button) {
            const QString text = QCoreApplication::translate("QPlatformTheme", known.text);
            addButton(withoutMnemonic(text), known.role, known.button);
        }
    }
    for (MScrollArea *area : {bodyArea, buttonArea})
        QObject::connect(area, &MScrollArea::contentChanged, this, [this] { layOut(); });
    fillBody();
}

MButtonModel *MDialogPrivate::addButton(const QString &text, M::ButtonRole role, M::StandardButton standard)
{
    auto *model = new MButtonModel(text, role, standard, q);
    auto *view = new MButton(text, buttonBox);
    view->setStyleName(isPrimary(model) ? QStringLiteral("MDialogPrimaryButton")
                                        : QStringLiteral("MDialogButton"));
    models.append(model);
    views.insert(model, view);
    MButtonPrivate::of(view)->setWaiting(guard.isWaiting());
    QObject::connect(model, &MButtonModel::textChanged, view, &MButton::setText);
    QObject::connect(view, &MButton::clicked, model, &MButtonModel::click);
    QObject::connect(model, &MButtonModel::clicked, this, [this, model] { press(model); });
    QObject::connect(model, &QObject::destroyed, this, &MDialogPrivate::forgetButton);
    return model;
}

void MDialogPrivate::forgetButton(const QObject *model)
{
    const auto gone = std::find(models.cbegin(), models.cend(), model);
    if (gone == models.cend())
        return;
    MButton *view = views.take(*gone);
    models.erase(gone);
    // Qt would give the focus to the next button, which nobody chose.
    view->clearFocus();
    view->hide();
    // It may be the one whose press led here.
    view->deleteLater();
    layOut();
}

void MDialogPrivate::press(MButtonModel *model)
{
    // An answer that comes after the last one changes nothing.
    if (done)
        return;
    clicked = model;
    q->done(model->standardButton());
}

void MDialogPrivate::setHeadIcon(const QString &id)
{
    headIcon->setImage(id);
    fillBody();
}

void MDialogPrivate::fillTitleBar()
{
    const bool hasIcon = !titleIcon->imageId().isEmpty();
    titleIcon->setVisible(hasIcon);
    spinner->setVisible(busy);
    titleBar->setVisible(hasIcon || busy || !titleLabel->text().isEmpty());
    titleLabel->setAlignment((hasIcon ? Qt::AlignLeft : Qt::AlignHCenter) | Qt::AlignVCenter);

    QGraphicsLinearLayout *row =
        plainLayout(Qt::Horizontal, MThemePrivate::ownStyle("MDialogTitleBar").spacing);
    balance->setVisible(busy && !hasIcon);
    if (balance->isVisibleTo(titleBar))
        row->addItem(balance);
    if (hasIcon) {
        row->addItem(titleIcon);
        row->setAlignment(titleIcon, Qt::AlignVCenter);
    }
    row->addItem(titleLabel);
    row->setStretchFactor(titleLabel, 1);
    if (busy) {
        row->addItem(spinner);
        row->setAlignment(spinner, Qt::AlignVCenter);
    }
    titleBar->setLayout(row);
}

void MDialogPrivate::fillBody()
{
    fillTitleBar();
    headIcon->setVisible(!headIcon->imageId().isEmpty());
    QGraphicsLinearLayout *column = plainLayout(Qt::Vertical, MThemePrivate::ownStyle("MDialogBody").spacing);
    if (headIcon->isVisibleTo(body)) {
        column->addItem(headIcon);
        column->setAlignment(headIcon, Qt::AlignCenter);
    }
    if (titleBar->isVisibleTo(body))
        column->addItem(titleBar);
    if (centralWidget) {
        column->addItem(centralWidget);
        column->setStretchFactor(centralWidget, 1);
    }
    if (whole)
        column->addItem(buttonArea);
    else
        buttonArea->setParentItem(card);
    body->setLayout(column);
    layOut();
}

void MDialogPrivate::beginAgain()
{
    bodyArea->scrollTo(0);
    buttonArea->scrollTo(0);
    guard.restart();
}

qreal MDialogPrivate::widestButton() const
{
    qreal widest = 0;
    for (const MButton *view : views)
        widest = qMax(widest, view->effectiveSizeHint(Qt::PreferredSize).width());
    return widest;
}

MDialogPrivate::Arrangement MDialogPrivate::arrangementIn(qreal width) const
{
    const qreal gaps = MThemePrivate::ownStyle("MDialogButtons").spacing * (models.size() - 1);
    qreal together = 0;
    for (const MButton *view : views)
        together += view->effectiveSizeHint(Qt::PreferredSize).width();
    if (widestButton() * models.size() + gaps <= width)
        return EqualRow;
    return together + gaps <= width ? Row : Column;
}

qreal MDialogPrivate::buttonHeightIn(qreal width) const
{
    const bool column = arrangementIn(width) == Column;
    qreal highest = 0;
    qreal sum = MThemePrivate::ownStyle("MDialogButtons").spacing * (models.size() - 1);
    for (const MButton *view : views) {
        const qreal height =
            view->effectiveSizeHint(Qt::PreferredSize, QSizeF(column ? width : -1, -1)).height();
        highest = qMax(highest, height);
        sum += height;
    }
    return column ? sum : highest;
}

qreal MDialogPrivate::bodyHeightIn(qreal width) const
{
    qreal left, top, right, bottom;
    body->getContentsMargins(&left, &top, &right, &bottom);
    return bodyArea->contentHeight(width + left + right);
}

QList<MButton *> MDialogPrivate::orderedViews() const
{
    QList<MButtonModel *> ordered = models;
    std::stable_partition(ordered.begin(), ordered.end(),
                          [](const MButtonModel *model) { return !isDismissal(model); });
    QList<MButton *> found;
    for (const MButtonModel *model : std::as_const(ordered))
        found.append(views.value(model));
    return found;
}

void MDialogPrivate::arrangeButtons(qreal width)
{
    const qreal spacing = MThemePrivate::ownStyle("MDialogButtons").spacing;
    const Arrangement wanted = arrangementIn(width);
    // A new layout asks for another round of laying out, so it is only made when it is a different one.
    if (buttonBox->layout() && wanted == arrangement && buttonBox->layout()->count() == models.size())
        return;
    arrangement = wanted;
    QGraphicsLinearLayout *layout = plainLayout(wanted == Column ? Qt::Vertical : Qt::Horizontal, spacing);
    const QList<MButton *> ordered = orderedViews();
    for (MButton *view : ordered) {
        // The first button stands where the thumb is: on top of the others, or at the end of the row.
        layout->insertItem(wanted == Column ? -1 : 0, view);
        if (wanted == EqualRow)
            layout->setStretchFactor(view, 1);
    }
    // Tab and assistive technology visit them in this order.
    for (qsizetype i = ordered.size() - 1; i > 0; --i)
        ordered[i - 1]->stackBefore(ordered[i]);
    layout->setContentsMargins(ringRoom(), ringRoom(), ringRoom(), ringRoom());
    buttonBox->setLayout(layout);
}

qreal MDialogPrivate::ringRoom()
{
    return MPaint::focusReach(MThemePrivate::ownStyle("MButton"));
}

void MDialogPrivate::layOut()
{
    const bool portrait = q->size().height() >= q->size().width();
    const QString name = portrait ? QStringLiteral("MDialogPortrait") : QStringLiteral("MDialogLandscape");
    const MStyle &look = MThemePrivate::ownStyle(portrait ? "MDialogPortrait" : "MDialogLandscape");

    const QRectF screen = q->contentsRect();
    const qreal width = look.maximumWidth < 0 ? screen.width() : qMin(screen.width(), look.maximumWidth);
    const qreal inner = width - look.margins.left() - look.margins.right();
    const qreal tallest = screen.height() - look.margins.top() - look.margins.bottom();
    if (screen.isEmpty())
        return;
    if (isTooSmall(tallest, look) != whole) {
        whole = !whole;
        fillBody();
        return;
    }
    const bool beside = !whole && !portrait && isTooLow(look, tallest, inner);
    card->setStyleName(beside ? QStringLiteral("MDialogBeside") : name);
    if (whole)
        layOutWhole(look);
    else if (beside)
        layOutBeside(MThemePrivate::ownStyle("MDialogBeside"));
    else
        layOutParts(look, inner);
    guard.follow();
}

bool MDialogPrivate::isTooLow(const MStyle &look, qreal tallest, qreal inner) const
{
    return !models.isEmpty() && bodyHeightIn(inner) + look.spacing + buttonHeightIn(inner) > tallest;
}

bool MDialogPrivate::isTooSmall(qreal tallest, const MStyle &look) const
{
    qreal button = 0;
    for (const MButton *view : views)
        button = qMax(button, view->effectiveSizeHint(Qt::PreferredSize).height());
    return !models.isEmpty() && tallest - look.spacing < 2 * button;
}

void MDialogPrivate::layOutWhole(const MStyle &look)
{
    const QRectF screen = q->contentsRect();
    const qreal inner = qMax(qreal(1), screen.width() - 2 * ringRoom());
    arrangeButtons(inner);
    const qreal buttons = buttonArea->contentHeight(screen.width());
    buttonArea->setMinimumHeight(buttons);
    buttonArea->setPreferredHeight(buttons);
    body->setContentsMargins(0, look.margins.top(), 0, look.margins.bottom());
    card->setGeometry(screen);
    bodyArea->setGeometry(QRectF(QPointF(), screen.size()));
}

void MDialogPrivate::layOutParts(const MStyle &look, qreal inner)
{
    const QRectF screen = q->contentsRect();
    const qreal width = inner + look.margins.left() + look.margins.right();
    const qreal tallest = screen.height() - look.margins.top() - look.margins.bottom();
    if (inner <= 0)
        return;
    arrangeButtons(inner);
    // Only its geometry counts here.
    buttonArea->setMinimumHeight(-1);
    buttonArea->setPreferredHeight(-1);
    // The area is as much larger as the focus ring reaches beyond the buttons in it.
    const qreal room = 2 * ringRoom();
    const qreal buttons =
        models.isEmpty() ? 0 : qMin(buttonArea->contentHeight(inner + room) - room, tallest * buttonShare);
    const qreal gap = models.isEmpty() ? 0 : look.spacing;
    // The body reaches to the edges of the card, so that its scroll indicator stands beside the text.
    body->setContentsMargins(look.margins.left(), 0, look.margins.right(), 0);
    const qreal contents = qMin(bodyArea->contentHeight(width), tallest - buttons - gap);

    const qreal height = contents + gap + buttons + look.margins.top() + look.margins.bottom();
    const qreal left = screen.left() + (screen.width() - width) / 2;
    const qreal top =
        look.bottom ? screen.bottom() - height : screen.top() + qRound((screen.height() - height) / 2);
    card->setGeometry(QRectF(qRound(left), top, width, height));
    bodyArea->setGeometry(QRectF(0, look.margins.top(), width, contents));
    const QRectF place(look.margins.left(), look.margins.top() + contents + gap, inner, buttons);
    buttonArea->setGeometry(place.adjusted(-ringRoom(), -ringRoom(), ringRoom(), ringRoom()));
}

void MDialogPrivate::layOutBeside(const MStyle &look)
{
    const QRectF screen = q->contentsRect();
    const bool mirrored = q->layoutDirection() == Qt::RightToLeft;
    const qreal width = look.maximumWidth < 0 ? screen.width() : qMin(screen.width(), look.maximumWidth);
    const qreal inner = width - look.margins.left() - look.margins.right();
    const qreal tallest = screen.height() - look.margins.top() - look.margins.bottom();
    const qreal column = qMin(widestButton(), inner * besideShare);
    const qreal text = inner - look.spacing - column;
    if (text <= 0)
        return;
    arrangeButtons(column);
    buttonArea->setMinimumHeight(-1);
    buttonArea->setPreferredHeight(-1);
    const qreal room = 2 * ringRoom();
    const qreal buttons = qMin(buttonArea->contentHeight(column + room) - room, tallest);
    const qreal outer = look.margins.left();
    body->setContentsMargins(mirrored ? look.spacing : outer, 0, mirrored ? outer : look.spacing, 0);
    const qreal height = qMax(buttons, qMin(bodyHeightIn(text), tallest));

    const qreal whole = height + look.margins.top() + look.margins.bottom();
    const QPointF corner(screen.left() + (screen.width() - width) / 2,
                         screen.top() + (screen.height() - whole) / 2);
    card->setGeometry(QRectF(corner.toPoint(), QSizeF(width, whole)));
    const qreal bodyWidth = outer + text + look.spacing;
    bodyArea->setGeometry(QRectF(mirrored ? width - bodyWidth : 0, look.margins.top(), bodyWidth, height));
    // Low enough for a thumb.
    const QRectF place(mirrored ? outer : bodyWidth, look.margins.top() + height - buttons, column, buttons);
    buttonArea->setGeometry(place.adjusted(-ringRoom(), -ringRoom(), ringRoom(), ringRoom()));
}

MDialog::MDialog(M::StandardButtons buttons) : MDialog(QString(), buttons) {}

MDialog::MDialog(const QString &title, M::StandardButtons buttons) : d(std::make_unique<MDialogPrivate>(this))
{
    d->build(title, buttons);
    MSceneWindowPrivate::setCard(this, d->card);
    setDraggable(true);
    applyStyle();
}

MDialog::~MDialog() = default;

QString MDialog::title() const
{
    return d->titleLabel->text();
}

void MDialog::setTitle(const QString &title)
{
    d->titleLabel->setText(title);
    d->fillBody();
    d->beginAgain();
}

QString MDialog::titleBarIconId() const
{
    return d->titleIcon->imageId();
}

void MDialog::setTitleBarIconId(const QString &id)
{
    d->titleIcon->setImage(id);
    d->fillBody();
}

bool MDialog::isProgressIndicatorVisible() const
{
    return d->busy;
}

void MDialog::setProgressIndicatorVisible(bool visible)
{
    d->busy = visible;
    d->fillBody();
}

QGraphicsWidget *MDialog::centralWidget() const
{
    return d->centralWidget;
}

void MDialog::setCentralWidget(QGraphicsWidget *widget)
{
    if (d->centralWidget == widget)
        return;
    delete d->centralWidget;
    d->centralWidget = widget;
    d->fillBody();
    d->beginAgain();
}

int MDialog::inputDelay() const
{
    return d->guard.delay();
}

void MDialog::setInputDelay(int milliseconds)
{
    d->guard.setDelay(milliseconds);
}

bool MDialog::isNotice() const
{
    return d->notice;
}

void MDialog::setNotice(bool notice)
{
    d->notice = notice;
}

QList<MButtonModel *> MDialog::buttons() const
{
    return d->models;
}

MButtonModel *MDialog::button(M::StandardButton button) const
{
    for (MButtonModel *model : std::as_const(d->models))
        if (button != M::NoStandardButton && model->standardButton() == button)
            return model;
    return nullptr;
}

MButtonModel *MDialog::addButton(const QString &text)
{
    return addButton(text, M::InvalidRole);
}

MButtonModel *MDialog::addButton(const QString &text, M::ButtonRole role)
{
    MButtonModel *model = d->addButton(text, role, M::NoStandardButton);
    d->layOut();
    return model;
}

void MDialog::removeButton(MButtonModel *button)
{
    if (!d->models.contains(button))
        return;
    d->forgetButton(button);
    // It may be the one that was pressed.
    button->deleteLater();
}

MButtonModel *MDialog::clickedButton() const
{
    return d->clicked;
}

int MDialog::result() const
{
    return d->result;
}

void MDialog::done(int result)
{
    if (d->done)
        return;
    d->done = true;
    d->result = result;
    const QPointer<MDialog> self(this);
    Q_EMIT finished(result);
    // A slot may have deleted the dialog, or let it appear again.
    if (self && d->done)
        disappear();
}

void MDialog::accept()
{
    d->clicked = nullptr;
    done(M::OkButton);
}

void MDialog::reject()
{
    d->clicked = nullptr;
    done(M::CancelButton);
}

void MDialog::dismiss()
{
    reject();
}

void MDialog::aboutToAppear()
{
    d->done = false;
    d->clicked = nullptr;
    d->beginAgain();
}

void MDialog::keyPressEvent(QKeyEvent *event)
{
    const qreal page = d->bodyArea->size().height();
    const qreal from = d->bodyArea->position();
    switch (event->key()) {
    case Qt::Key_PageDown:
        d->bodyArea->scrollTo(from + page * MScrollArea::pageStep);
        return;
    case Qt::Key_PageUp:
        d->bodyArea->scrollTo(from - page * MScrollArea::pageStep);
        return;
    case Qt::Key_Down:
        if (d->bodyArea->scrollTo(from + page * lineStep))
            return;
        break;
    case Qt::Key_Up:
        if (d->bodyArea->scrollTo(from - page * lineStep))
            return;
        break;
    default:
        break;
    }
    MSceneWindow::keyPressEvent(event);
}

void MDialog::resizeEvent(QGraphicsSceneResizeEvent *event)
{
    MSceneWindow::resizeEvent(event);
    d->layOut();
}

void MDialog::styleChanged()
{
    d->fillBody();
}

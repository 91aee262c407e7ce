// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Reads the input as what a restless user and a restless program do to a page with a list, a dialog above it
// and another one above that: fingers, wheel and keys, changes of the models, of the look and of the windows,
// deletions. Nothing may crash, no question may be answered twice, and the focus is always on something that
// is seen and enabled.
#include <array>
#include <memory>

#include <QApplication>
#include <QGraphicsLinearLayout>
#include <QPointer>
#include <QStringListModel>

#include <MAbstractCellCreator>
#include <MButton>
#include <MLabel>
#include <MList>
#include <MListItem>
#include <MMessageBox>
#include <MTheme>
#include <MWindow>

#include "scene/mscenemanager_p.h"
#include "support.h"
#include "touchdriver.h"

namespace {

constexpr QSize windowSize(240, 320);

class Creator : public MAbstractCellCreator<MListItem>
{
public:
    void updateCell(const QModelIndex &index, MWidget *cell) const override
    {
        auto *layout = new QGraphicsLinearLayout(Qt::Horizontal);
        layout->addItem(new MLabel(index.data().toString()));
        cell->setLayout(layout);
    }
};

/** The bytes that are left of the input. */
class Input
{
public:
    Input(const uint8_t *data, size_t size) : next(data), end(data + size) {}

    bool isEmpty() const { return next == end; }
    int number(int below) { return isEmpty() ? 0 : *next++ % below; }
    QPointF place()
    {
        const int x = number(256);
        return QPointF(x * windowSize.width() / 256, number(256) * windowSize.height() / 256);
    }

private:
    const uint8_t *next;
    const uint8_t *end;
};

QStringList rows(int count)
{
    QStringList rows;
    for (int i = 0; i < count; ++i)
        rows.append(QString::number(i));
    return rows;
}

/** A dialog that counts its answers; it is kept for as long as it is wanted. */
class Question
{
public:
    QPointer<MMessageBox> box;
    int answers = 0;
};

class Play
{
public:
    explicit Play(Input *input) : input(input)
    {
        window.resize(windowSize);
        makePage();
        window.show();
        window.activateWindow();
    }
    ~Play()
    {
        for (const Question &question : questions)
            delete question.box;
        delete page;
    }

    void step()
    {
        using Step = void (Play::*)();
        constexpr std::array<Step, 24> steps{
            &Play::press,       &Play::move,         &Play::lift,         &Play::tap,
            &Play::flick,       &Play::turnWheel,    &Play::pressKey,     &Play::pressKey,
            &Play::processAll,  &Play::changeRows,   &Play::replaceModel, &Play::selectRow,
            &Play::ask,         &Play::ask,          &Play::close,        &Play::click,
            &Play::changeTexts, &Play::changeButton, &Play::changeLook,   &Play::turnWindow,
            &Play::hideWindow,  &Play::disable,      &Play::remove,       &Play::react,
        };
        (this->*steps[size_t(input->number(int(steps.size())))])();
        check();
    }

private:
    void makePage()
    {
        page = new MSceneWindow;
        list = new MList;
        list->setItemModel(&models[0]);
        list->setCellCreator(new Creator);
        list->setSelectionMode(MList::SingleSelection);
        toggle = new MButton;
        toggle->setViewType(MButton::switchType);
        auto *layout = new QGraphicsLinearLayout(Qt::Vertical, page);
        layout->addItem(toggle);
        layout->addItem(list);
        QObject::connect(list, &MList::itemClicked, list, [this] { answerAtOnce(); });
        page->appear(&window);
    }

    void press() { finger.press(input->place(), input->number(8) ? Qt::LeftButton : Qt::RightButton); }
    void move() { finger.move(input->place(), 100 + input->number(256)); }
    void lift() { finger.lift(); }
    void tap() { finger.wait(input->number(256) * 4).press(input->place()).lift(); }
    void flick()
    {
        const QPointF from = input->place();
        finger.flick(from, input->place());
    }
    void turnWheel()
    {
        const QPointF place = input->place();
        finger.wheel(place, input->number(2) ? 240 : -240, input->number(4) ? Qt::Vertical : Qt::Horizontal);
    }
    void pressKey()
    {
        constexpr std::array keys{Qt::Key_Tab,      Qt::Key_Backtab, Qt::Key_Return, Qt::Key_Space,
                                  Qt::Key_Escape,   Qt::Key_Up,      Qt::Key_Down,   Qt::Key_Left,
                                  Qt::Key_Right,    Qt::Key_Home,    Qt::Key_End,    Qt::Key_PageUp,
                                  Qt::Key_PageDown, Qt::Key_Back,    Qt::Key_Select, Qt::Key_A};
        finger.key(keys[size_t(input->number(int(keys.size())))]);
    }
    void processAll()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

    void changeRows()
    {
        QStringListModel &model = models[size_t(input->number(2))];
        const int row = input->number(40);
        const int count = 1 + input->number(3);
        switch (input->number(5)) {
        case 0:
            model.insertRows(qMin(row, model.rowCount()), count);
            break;
        case 1:
            if (row + count <= model.rowCount())
                model.removeRows(row, count);
            break;
        case 2:
            model.setStringList(rows(row));
            break;
        case 3:
            if (row < model.rowCount())
                model.setData(model.index(row), QStringLiteral("changed"));
            break;
        default:
            model.sort(0, input->number(2) ? Qt::AscendingOrder : Qt::DescendingOrder);
        }
    }
    void replaceModel()
    {
        if (!list)
            return;
        const int number = input->number(4);
        list->setItemModel(number == 3 ? nullptr : &models[size_t(number % 2)]);
        if (input->number(4) == 0)
            list->setCellCreator(new Creator);
    }
    void selectRow()
    {
        if (list && list->itemModel())
            list->selectItem(list->itemModel()->index(input->number(40), 0));
    }

    void ask()
    {
        Question &question = questions[size_t(input->number(int(questions.size())))];
        if (!question.box)
            makeBox(&question);
        question.answers = 0;
        question.box->appear(&window, input->number(2) ? MDialog::DestroyWhenDone : MDialog::KeepWhenDone);
    }
    void makeBox(Question *question)
    {
        question->box = new MMessageBox(QStringLiteral("Title"), M::YesButton | M::NoButton);
        question->box->setInputDelay(input->number(2));
        if (input->number(2)) {
            auto *rows = new MList;
            rows->setItemModel(&models[1]);
            rows->setCellCreator(new Creator);
            rows->setSelectionMode(MList::SingleSelection);
            QObject::connect(rows, &MList::itemClicked, rows, [this] { answerAtOnce(); });
            question->box->setCentralWidget(rows);
        }
        QObject::connect(question->box, &MDialog::finished, question->box, [this, question] {
            require(++question->answers == 1);
            const int number = reaction;
            reaction = 0;
            if (number == 1)
                delete question->box;
            else if (number == 2)
                questions[0].box.isNull() ? ask() : questions[0].box->disappear();
            else if (number == 3)
                delete questions[1].box;
        });
    }
    MMessageBox *anyBox() { return questions[size_t(input->number(int(questions.size())))].box; }
    void answerAtOnce()
    {
        if (reaction == 4 && questions[1].box)
            questions[1].box->accept();
        else if (reaction == 5)
            delete questions[1].box;
    }
    void close()
    {
        MMessageBox *box = anyBox();
        const int way = input->number(5);
        if (!box || !box->sceneManager())
            return;
        if (way == 0)
            box->accept();
        else if (way == 1)
            box->done(way);
        else if (way == 2)
            box->dismiss();
        else if (way == 3)
            box->disappear();
        else
            delete box;
    }
    void click()
    {
        MMessageBox *box = anyBox();
        if (box && box->sceneManager() && !box->buttons().isEmpty())
            box->buttons().at(input->number(int(box->buttons().size())))->click();
    }
    void changeTexts()
    {
        MMessageBox *box = anyBox();
        const QString text = QStringLiteral("word ").repeated(input->number(256) * 4);
        if (!box)
            return;
        box->setText(text);
        box->setTitle(text.left(input->number(256)));
        box->setProgressIndicatorVisible(input->number(2));
    }
    void changeButton()
    {
        MMessageBox *box = anyBox();
        const int way = input->number(4);
        if (!box)
            return;
        if (way < 2)
            box->addButton(QStringLiteral("Added ").repeated(1 + input->number(12)));
        else if (!box->buttons().isEmpty() && way == 2)
            box->removeButton(box->buttons().last());
        else if (!box->buttons().isEmpty())
            delete box->buttons().first();
    }

    void changeLook()
    {
        MTheme *theme = MTheme::instance();
        switch (input->number(4)) {
        case 0:
            theme->setVariant(MTheme::Variant(input->number(4)));
            break;
        case 1:
            theme->setTextScale(0.5 + input->number(4));
            break;
        case 2:
            window.setLayoutDirection(input->number(2) ? Qt::RightToLeft : Qt::LeftToRight);
            break;
        default:
            toggle->setViewType(input->number(2) ? MButton::switchType : MButton::pushType);
        }
    }
    void turnWindow()
    {
        if (input->number(2))
            window.sceneManager()->setOrientationAngle(M::OrientationAngle(input->number(4) * M::Angle90));
        else
            window.resize(60 + input->number(256), 60 + input->number(256));
    }
    void hideWindow()
    {
        window.hide();
        if (input->number(2))
            processAll();
        window.show();
        window.activateWindow();
    }
    void disable()
    {
        const bool on = input->number(2);
        switch (input->number(4)) {
        case 0:
            toggle->setEnabled(on);
            break;
        case 1:
            list->setEnabled(on);
            break;
        case 2:
            toggle->setVisible(on);
            break;
        default:
            (input->number(2) ? static_cast<QGraphicsItem *>(toggle) : list)->setFocus();
        }
    }
    void remove()
    {
        delete page;
        makePage();
    }
    void react() { reaction = input->number(6); }

    void check()
    {
        const MSceneWindow *front = MSceneManagerPrivate::of(window.sceneManager())->front();
        const QGraphicsItem *focused = window.scene()->focusItem();
        if (!front || !window.scene()->hasFocus())
            return;
        require(focused);
        require(focused->isVisible() && focused->isEnabled());
        require(focused == front || front->isAncestorOf(focused));
    }

    Input *input;
    std::array<QStringListModel, 2> models{QStringListModel(rows(3)), QStringListModel(rows(30))};
    MWindow window;
    TouchDriver finger{&window};
    QPointer<MSceneWindow> page;
    QPointer<MList> list;
    QPointer<MButton> toggle;
    std::array<Question, 2> questions;
    int reaction = 0; ///< To the next answer
};

} // namespace

// The font library never frees what it has read about the fonts.
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:libfontconfig\n";
}

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    new QApplication(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Input input(data, size);
    {
        Play play(&input);
        while (!input.isEmpty())
            play.step();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return 0;
}

// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QClipboard>
#include <QCoreApplication>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMimeData>
#include <QPaintEvent>
#include <QTest>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextLayout>

/// A view that remembers what it paints.
class WatchingView : public QGraphicsView
{
public:
    QRegion painted;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        painted += event->region();
        QGraphicsView::paintEvent(event);
    }
};

/// A text item in a window, edited with mouse and keys.
template <class Text> class TextWindow
{
public:
    TextWindow()
        : item(new Text)
    {
        scene.addItem(item);
        scene.setSceneRect(-50, -50, 500, 400);
        view.setScene(&scene);
        view.resize(520, 420);
        view.show();
    }

    [[nodiscard]] bool isReady() { return QTest::qWaitForWindowActive(&view); }

    void doubleClick(const QPointF &position)
    {
        const QPoint pixel = pixelOf(position);
        QTest::mouseMove(view.viewport(), pixel);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, pixel);
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, pixel);
        QTest::mouseRelease(view.viewport(), Qt::LeftButton, Qt::NoModifier, pixel);
    }
    void click(const QPointF &position, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers, pixelOf(position));
    }
    void drag(const QPointF &from, const QPointF &to)
    {
        QTest::mousePress(view.viewport(), Qt::LeftButton, Qt::NoModifier, pixelOf(from));
        QTest::mouseMove(view.viewport(), pixelOf((from + to) / 2));
        QTest::mouseMove(view.viewport(), pixelOf(to));
        QTest::mouseRelease(view.viewport(), Qt::LeftButton, Qt::NoModifier, pixelOf(to));
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, int times = 1)
    {
        for (; times > 0; --times)
            QTest::keyClick(view.viewport(), key, modifiers);
    }
    void undo() { press(Qt::Key_Z, Qt::ControlModifier); }
    void redo() { press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier); }
    /// Types letters, each with its key.
    void write(const QString &letters) { QTest::keyClicks(view.viewport(), letters); }
    /// Types as a key does that makes several code units at once.
    void type(const QString &text, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QKeyEvent event(QEvent::KeyPress, 0, modifiers, text);
        QCoreApplication::sendEvent(view.viewport(), &event);
    }
    /// Commits a text as an input method does.
    void commit(const QString &text)
    {
        QInputMethodEvent event;
        event.setCommitString(text);
        QCoreApplication::sendEvent(&view, &event);
    }

    [[nodiscard]] QString text() const { return item->toPlainText(); }
    [[nodiscard]] int position() const { return item->textCursor().position(); }
    [[nodiscard]] QString selected() const { return item->textCursor().selectedText(); }
    /// Where the cursor stands before a character of a text of one line, in the item.
    [[nodiscard]] QPointF placeOf(int character) const
    {
        const QTextLayout *layout = item->document()->firstBlock().layout();
        const QTextLine line = layout->lineForTextPosition(character);
        return layout->position() + QPointF(line.cursorToX(character), line.y() + line.height() / 2.0);
    }

    void startWatching()
    {
        QCoreApplication::processEvents();
        view.painted = QRegion();
    }
    /// Whether all of an area of the scene has been painted since.
    [[nodiscard]] bool hasRepainted(const QRectF &area)
    {
        const QRegion pixels = view.mapFromScene(area).boundingRect() & view.viewport()->rect();
        return QTest::qWaitFor([&] { return (pixels - view.painted).isEmpty(); }, 500);
    }

    QGraphicsScene scene;
    Text *item;
    WatchingView view;

private:
    [[nodiscard]] QPoint pixelOf(const QPointF &position) const
    {
        return view.mapFromScene(item->mapToScene(position));
    }
};

namespace Clipboard {

inline void set(const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
}

/// Puts HTML there, and text unless it is empty.
inline void setHtml(const QString &html, const QString &text = QString())
{
    auto *data = new QMimeData;
    data->setHtml(html);
    if (!text.isEmpty())
        data->setText(text);
    QGuiApplication::clipboard()->setMimeData(data);
}

[[nodiscard]] inline QString text()
{
    return QGuiApplication::clipboard()->text();
}

} // namespace Clipboard

#pragma once

#include "platform/Pasteboard.h"
#include "terminal/TerminalEmulator.h"
#include "terminal/views/GridPainter.h"
#include "terminal/views/TerminalGridView.h"

#include <QApplication>
#include <QImage>
#include <QScreen>
#include <QTest>

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace tavrel {

/// A grid on a terminal of some cells, shown in a window of its own that has the focus. What goes
/// to the shell is kept.
class ShownGrid {
public:
    explicit ShownGrid(int columns = 40, int rows = 8, const TerminalAppearance& appearance = {})
        : emulator(columns, rows), view(pasteboard, nullptr, appearance)
    {
        view.resize(sizeFor(columns, rows));
        view.onInput = [this](std::string_view bytes) { input += bytes; };
        view.openLink = [this](const std::u16string& address) { opened.push_back(address); };
        view.setEmulator(&emulator);
        view.show();
        view.setFocus();
        QApplication::setActiveWindow(&view);
        settle();
    }
    ~ShownGrid() { view.setEmulator(nullptr); }

    QSize sizeFor(int columns, int rows) const
    {
        return {static_cast<int>(8 + columns * view.cellWidth()),
                static_cast<int>(4 + rows * view.cellHeight())};
    }

    void settle() { QCoreApplication::processEvents(); }
    void feed(std::string_view bytes)
    {
        emulator.feed(bytes);
        view.refresh();
        settle();
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(&view, key, modifiers);
        settle();
    }
    /// The middle of a cell of a row in sight, counted from the first.
    QPoint pointAt(int row, int column) const
    {
        return view.cellRect({view.scroll().top() + row, column}).center().toPoint();
    }
    void click(int row, int column, Qt::KeyboardModifiers modifiers = {})
    {
        apart();
        QTest::mouseClick(&view, Qt::LeftButton, modifiers, pointAt(row, column));
        settle();
    }
    void doubleClick(int row, int column)
    {
        apart();
        QTest::mouseClick(&view, Qt::LeftButton, {}, pointAt(row, column));
        QTest::mouseDClick(&view, Qt::LeftButton, {}, pointAt(row, column));
        settle();
    }
    void drag(QPoint from, QPoint to)
    {
        apart();
        QTest::mousePress(&view, Qt::LeftButton, {}, from);
        QTest::mouseMove(&view, to);
        settle();
        QTest::mouseRelease(&view, Qt::LeftButton, {}, to);
        settle();
    }
    /// Far enough from the last click that the two are never taken for a double one.
    static void apart() { QTest::lastMouseTimestamp += 2000; }

    /// What is on the screen: the sum of all partial drawings so far.
    QImage shownPicture()
    {
        return view.screen()
            ->grabWindow(view.winId())
            .toImage()
            .convertToFormat(QImage::Format_RGB32);
    }
    /// The same drawn anew.
    QImage picture() { return view.grab().toImage().convertToFormat(QImage::Format_RGB32); }
    QImage cellPicture(int row, int column)
    {
        return picture().copy(view.cellRect({view.scroll().top() + row, column}).toAlignedRect());
    }
    static QRgb rgb(const TerminalRgb& color) { return qtColor(color).rgb(); }
    const GridColors& colors() const { return view.appearance().colors; }
    /// How many pixels of the cell have exactly this colour.
    int pixels(int row, int column, QRgb color)
    {
        const QImage cell = cellPicture(row, column);
        int count = 0;
        for (int y = 0; y < cell.height(); ++y) {
            for (int x = 0; x < cell.width(); ++x)
                count += (cell.pixel(x, y) | 0xFF000000) == (color | 0xFF000000);
        }
        return count;
    }
    int cellArea() { return cellPicture(0, 0).width() * cellPicture(0, 0).height(); }
    bool isFilledWith(int row, int column, QRgb color)
    {
        return pixels(row, column, color) == cellArea();
    }

    MemoryPasteboard pasteboard;
    TerminalEmulator emulator;
    TerminalGridView view;
    std::string input;
    std::vector<std::u16string> opened;
};

}  // namespace tavrel

#include "widgets/Appearance.h"
#include "widgets/DropArea.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FlatButton.h"
#include "widgets/Icons.h"
#include "widgets/MASPreferencesWindowController.h"
#include "widgets/PasswordField.h"
#include "widgets/SmoothProgressBar.h"
#include "widgets/Theme.h"

#include <QDir>
#include <QLabel>
#include <QMimeData>
#include <QPalette>
#include <QSignalSpy>
#include <QSvgRenderer>
#include <QTest>
#include <QToolButton>
#include <QUrl>

using namespace vantoro;

namespace {

class PageDouble : public MASPreferencesViewController {
public:
    PageDouble(QString name, QStringList& log) : m_name(std::move(name)), m_log(log) {}
    QString identifier() const override { return m_name; }
    QIcon toolbarItemImage() const override { return {}; }
    QString toolbarItemLabel() const override { return m_name; }
    QWidget* view() override { return m_view; }
    void viewWillAppear() override { m_log << "+" + m_name; }
    void viewWillDisappear() override { m_log << "-" + m_name; }

private:
    QString m_name;
    QStringList& m_log;
    QLabel* m_view = new QLabel;
};

class DropAreaDouble : public DropArea {
public:
    QStringList taken;
    bool answer = true;

protected:
    bool performDrop(const QStringList& paths) override
    {
        taken = paths;
        return answer;
    }
};

bool drop(DropArea& area, const QMimeData& data)
{
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&area, &enter);
    if (!enter.isAccepted())
        return false;
    QDropEvent event(QPointF(5, 5), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&area, &event);
    return event.isAccepted();
}

}

class WidgetsTest : public QObject {
    Q_OBJECT

private slots:
    void colourPairsReadWellInBothSchemes()
    {
        for (const QPalette& palette : {theme::lightPalette(), theme::darkPalette()}) {
            const auto colors = theme::colors(palette);
            for (const QColor& ground : {colors.surface, colors.surfaceAlternate, colors.window}) {
                QVERIFY(theme::contrast(colors.text, ground) >= 7);
                for (const QColor& ink : {colors.textSecondary, colors.danger, colors.warning})
                    QVERIFY2(theme::contrast(ink, ground) >= 4.5, qPrintable(ink.name() + " on " + ground.name()));
            }
            const QColor caption = palette.color(QPalette::PlaceholderText);
            for (const QColor& ground : {colors.surface, colors.surfaceAlternate, colors.window, colors.hover})
                QVERIFY2(theme::contrast(caption, ground) >= 4.5, qPrintable("caption on " + ground.name()));
            QVERIFY(theme::contrast(theme::accent(theme::Accent::Extract), colors.surface) >= 3);
        }
        for (const auto accent : {theme::Accent::Extract, theme::Accent::Compress, theme::Accent::Selection}) {
            const QColor fill = theme::accentFill(accent);
            QVERIFY(theme::contrast(fill, theme::textOn(fill)) >= 4.5);
        }
    }

    void everyPictureCanBeDrawn()
    {
        icons::application();
        const QDir folder(":/icons");
        const QStringList files = folder.entryList({"*.svg"});
        QVERIFY(files.size() > 20);
        for (const QString& file : files) {
            QVERIFY2(QSvgRenderer(folder.filePath(file)).isValid(), qPrintable(file));
            const QImage image = icons::pixmap(file.chopped(4), 16, 1).toImage();
            bool drawn = false;
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x)
                    drawn = drawn || qAlpha(image.pixel(x, y)) > 128;
            }
            QVERIFY2(drawn, qPrintable(file));
        }
    }

    void anElidedNameKeepsItsStartAndItsEnding()
    {
        ElidedLabel label("A very long archive name that nobody can read at a glance.tar.gz");
        label.resize(160, 20);
        const QString shown = label.shownText();
        QVERIFY(shown.startsWith("A v"));
        QVERIFY(shown.endsWith(".gz"));
        QVERIFY(label.fontMetrics().horizontalAdvance(shown) <= 160);
        QCOMPARE(label.text().size(), 64); // what assistive technology reads
    }

    void aHostileNameStaysOnOneLine()
    {
        ElidedLabel label("one\ntwo\x1b[31m");
        label.resize(600, 20);
        QVERIFY(!label.shownText().contains('\n'));
        QVERIFY(!label.shownText().contains(QChar(0x1b)));
    }

    void theBarTellsTenthsAndCutsOffNonsense()
    {
        SmoothProgressBar bar;
        QSignalSpy changes(&bar, &QProgressBar::valueChanged);
        for (int i = 0; i <= 1000; ++i)
            bar.setFraction(i / 1000.0);
        QCOMPARE(changes.count(), 10);
        bar.setFraction(7);
        QCOMPARE(bar.fraction(), 1.0);
        bar.setFraction(std::nan(""));
        QCOMPARE(bar.fraction(), 0.0);
        bar.setIndeterminate(true);
        QCOMPARE(bar.maximum(), 0);
    }

    void capsLockIsSeenInWhatTheKeysProduce()
    {
        PasswordField field;
        QSignalSpy changes(&field, &PasswordField::capsLockChanged);
        QTest::sendKeyEvent(QTest::Click, &field, Qt::Key_A, 'A', Qt::NoModifier);
        QVERIFY(field.isCapsLockOn());
        QTest::sendKeyEvent(QTest::Click, &field, Qt::Key_1, '1', Qt::NoModifier);
        QVERIFY(field.isCapsLockOn());
        QTest::sendKeyEvent(QTest::Click, &field, Qt::Key_A, 'a', Qt::ShiftModifier);
        QVERIFY(field.isCapsLockOn());
        QTest::sendKeyEvent(QTest::Click, &field, Qt::Key_A, 'A', Qt::ShiftModifier);
        QVERIFY(!field.isCapsLockOn());
        QCOMPARE(changes.count(), 2);
    }

    void thePasswordIsHiddenUntilItsButtonIsPressed()
    {
        PasswordField field;
        field.show();
        QToolButton* reveal = nullptr;
        for (auto* button : field.findChildren<QToolButton*>()) {
            if (button->isVisible())
                reveal = button;
        }
        QVERIFY(reveal);
        QCOMPARE(field.echoMode(), QLineEdit::Password);
        QCOMPARE(reveal->accessibleName(), QString("Show password"));
        reveal->click();
        QCOMPARE(field.echoMode(), QLineEdit::Normal);
        QCOMPARE(reveal->accessibleName(), QString("Hide password"));
    }

    void withReducedMotionAButtonChangesAtOnce()
    {
        Appearance::instance().setReducedMotion(true);
        FlatButton button("Go", FlatButton::Kind::Plain);
        button.setLooks({Qt::red, {}}, {Qt::red, {}});
        button.show();
        QVERIFY(QTest::qWaitForWindowExposed(&button));
        const auto ground = [&] { return button.grab().toImage().pixelColor(button.width() / 2, 4); };
        QCOMPARE(ground(), QColor(Qt::red));
        button.setLooks({Qt::green, {}}, {Qt::green, {}});
        QCOMPARE(ground(), QColor(Qt::green));
        Appearance::instance().setReducedMotion(false);
    }

    void aDropHandsOverLocalPathsInOrder()
    {
        DropAreaDouble area;
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile("/b c.zip"), QUrl("https://example.org/x.zip"), QUrl::fromLocalFile("/a")});
        QVERIFY(drop(area, data));
        QCOMPARE(area.taken, QStringList({"/b c.zip", "/a"}));
        QVERIFY(!area.isHighlighted());
        area.answer = false;
        QVERIFY(!drop(area, data));
        QMimeData text;
        text.setText("no file");
        area.taken.clear();
        QVERIFY(!drop(area, text));
        QVERIFY(area.taken.isEmpty());
    }

    void pagesHearWhenTheyComeAndGo()
    {
        QStringList log;
        PageDouble one("one", log);
        PageDouble two("two", log);
        auto controller = MASPreferencesWindowController::initWithViewControllers({&one, &two}, "Pages");
        QCOMPARE(controller->selectedViewController(), &one);
        QVERIFY(log.isEmpty());
        controller->window()->show();
        controller->selectControllerAtIndex(1);
        controller->selectControllerAtIndex(2);
        QCOMPARE(controller->indexOfSelectedController(), 1);
        QVERIFY(two.view()->isVisible());
        QVERIFY(!one.view()->isVisible());
        controller->window()->hide();
        QCOMPARE(log, QStringList({"+one", "-one", "+two", "-two"}));
    }
};

QTEST_MAIN(WidgetsTest)
#include "widgets_test.moc"

// Puts every panel of the extraction side on the screen with believable contents, once in light and once in dark, and
// saves pictures: for looking at, and as a smoke test that all of it can be drawn.
#include "browse/KXEncodePopButton.h"
#include "extraction/HDAlert.h"
#include "extraction/KXArchiveManageController.h"
#include "extraction/KXArchiveTaskView.h"
#include "extraction/KXTaskListsView.h"
#include "extraction/QuestionPanels.h"
#include "extraction/ReportWindow.h"
#include "extraction/TaskWindow.h"
#include "widgets/Appearance.h"
#include "widgets/DropArea.h"
#include "widgets/FlatButton.h"
#include "widgets/Icons.h"
#include "widgets/MASPreferencesWindowController.h"
#include "widgets/PasswordField.h"
#include "widgets/ProgressOverlay.h"
#include "widgets/Translation.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QMessageBox>
#include <QRadioButton>
#include <QThread>
#include <QVBoxLayout>

#include <functional>
#include <thread>

using namespace vantoro;

namespace {

constexpr int kWidth = 520;
constexpr qint64 kLongestWait = 30'000; // milliseconds

int g_patience = 1; // what waiting times are divided by

void settle(int milliseconds)
{
    milliseconds /= g_patience;
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < milliseconds) {
        QApplication::processEvents(QEventLoop::AllEvents, 10);
        QThread::msleep(2);
    }
}

class Gallery {
public:
    Gallery(QDir folder, QString scheme) : m_folder(std::move(folder)), m_scheme(std::move(scheme)) {}

    void save(QWidget& widget, const QString& name)
    {
        settle(400);
        const QString path = m_folder.filePath(QStringLiteral("%1-%2.png").arg(name, m_scheme));
        if (!widget.grab().save(path))
            qFatal("cannot write %s", qPrintable(path));
    }

private:
    QDir m_folder;
    QString m_scheme;
};

/// A task window with rows, and threads that ask on behalf of the jobs.
class Scene {
public:
    Scene()
    {
        m_window.taskListsView()->setResizeAction(
            Action<KXTaskListsView*>(&m_window, [this](KXTaskListsView*) { m_window.fitToList(); }));
        m_window.encodePopButton()->buildEncodingListWithAutoDetect();
        m_window.resize(kWidth, 60);
    }
    ~Scene()
    {
        for (auto* row : m_rows)
            row->closeQuestions();
        for (auto& asker : m_askers)
            asker.join();
    }

    KXArchiveTaskView* add(const QString& path)
    {
        m_jobs.push_back(KXArchiveManageController::initWithFilename(path));
        auto* row = dynamic_cast<KXArchiveTaskView*>(m_window.taskListsView()->makeTaskView());
        row->setArchiveController(m_jobs.back().get());
        m_jobs.back()->setDestination(QStringLiteral("/media/Photos"));
        row->setupWaitView();
        m_window.taskListsView()->addTaskView(static_cast<DDTaskView*>(row));
        m_rows.push_back(row);
        return row;
    }
    void ask(std::function<void()> question) { m_askers.emplace_back(std::move(question)); }
    void show()
    {
        m_window.show();
        m_window.fitToList();
        settle(300);
    }
    TaskWindow& window() { return m_window; }

private:
    TaskWindow m_window;
    std::vector<std::unique_ptr<KXArchiveManageController>> m_jobs;
    std::vector<KXArchiveTaskView*> m_rows;
    std::vector<std::thread> m_askers;
};

void progressOf(KXArchiveTaskView* row)
{
    row->setupProgressViewInPreparingMode();
    row->setName(QStringLiteral("2019/Sardinia/Evening at the harbour of Alghero, from the city wall.jpeg"));
    for (int i = 0; i < 18; ++i) {
        XADProgress progress;
        progress.written = 24'000'000ULL + static_cast<quint64>(i) * 6'400'000ULL;
        progress.writtenTotal = 512'000'000ULL;
        progress.fraction = double(progress.written) / double(progress.writtenTotal);
        row->setProgress(progress.fraction);
        row->setProgressDetail(progress);
        settle(280);
    }
}

void taskList(Gallery& gallery)
{
    Scene scene;
    auto* first = scene.add(QStringLiteral("/home/ana/Downloads/Holiday photos 2019.zip"));
    scene.add(QStringLiteral("/home/ana/Downloads/project-sources-with-a-name-that-goes-on-and-on-2023-11-30.tar.gz"));
    scene.add(QStringLiteral("/home/ana/Downloads/גיבוי מסמכים.7z"));
    auto* fourth = scene.add(QStringLiteral("/home/ana/Downloads/Backup.part1.rar"));
    fourth->setupProgressViewInPreparingMode();
    scene.show();
    progressOf(first);
    gallery.save(scene.window(), QStringLiteral("tasks"));
}

void narrow(Gallery& gallery)
{
    Scene scene;
    auto* first = scene.add(QStringLiteral("/home/ana/Downloads/Holiday photos 2019.zip"));
    auto* second = scene.add(QStringLiteral("/home/ana/Downloads/Backup.part1.rar"));
    first->setupProgressViewInPreparingMode();
    second->displayNotWritableErrorWithResponseAction({});
    scene.window().resize(316, 100);
    scene.show();
    progressOf(first);
    gallery.save(scene.window(), QStringLiteral("narrow"));
}

using Question = std::function<void(KXArchiveTaskView*)>;

void question(Gallery& gallery, const QString& name, const Question& ask, const Question& then = {})
{
    Scene scene;
    auto* row = scene.add(QStringLiteral("/home/ana/Downloads/Tax papers.zip"));
    scene.add(QStringLiteral("/home/ana/Downloads/Backup.part1.rar"));
    row->setupProgressViewInPreparingMode();
    scene.show();
    scene.ask([row, ask] { ask(row); });
    // The asking thread may be kept off the processor for any time.
    QElapsedTimer clock;
    clock.start();
    while (!qobject_cast<QuestionPanel*>(row->displayedView())) {
        if (clock.elapsed() > kLongestWait)
            qFatal("the question %s is not shown", qPrintable(name));
        settle(200);
    }
    if (then)
        then(row);
    gallery.save(scene.window(), name);
}

void questions(Gallery& gallery)
{
    question(gallery, QStringLiteral("password"),
             [](auto* row) { row->displayPasswordInputWithApplyToAllPointer(nullptr, nullptr, 0); });
    question(
        gallery, QStringLiteral("password-wrong"),
        [](auto* row) { row->displayPasswordInputWithApplyToAllPointer(nullptr, nullptr, 1); },
        [](auto* row) {
            auto* panel = row->template findChild<PasswordPanel*>();
            panel->field()->setText(QStringLiteral("correct horse"));
            panel->field()->setRevealed(true);
        });
    question(gallery, QStringLiteral("encoding"), [](auto* row) {
        row->displayEncodingSelectorForXADString(
            XADString::stringWithBytes("\x83\x74\x83\x40\x83\x43\x83\x8b\x88\xea\x97\x97.txt", 20, 0.6F));
    });
    question(gallery, QStringLiteral("entry-error"), [](auto* row) {
        row->displayError(
            QStringLiteral("DO NOT extract the files \"2021/return.pdf\" from archive \"Tax papers.zip\": "
                           "The data is damaged."),
            nullptr);
    });
    question(gallery, QStringLiteral("read-error"), [](auto* row) {
        row->displayOpenError(QStringLiteral("DO NOT support unarchive this archive due to the format error."));
    });
    question(gallery, QStringLiteral("not-writable"), [](auto* row) {
        QMetaObject::invokeMethod(row, [row] { row->displayNotWritableErrorWithResponseAction({}); });
    });
}

void encodingList(Gallery& gallery)
{
    KXEncodePopButton button;
    button.resize(360, button.sizeHint().height());
    button.buildEncodingListMatchingXADString(
        XADString::stringWithBytes("\x83\x74\x83\x40\x83\x43\x83\x8b\x88\xea\x97\x97.txt", 20, 0.6F));
    button.selectItemWithTag(20);
    button.show();
    button.showPopup();
    gallery.save(*button.view()->window(), QStringLiteral("encoding-list"));
    button.hidePopup();
}

/// The rows with type of twice the size, then mirrored.
void otherReaders(Gallery& gallery)
{
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPointSizeF(usual.pointSizeF() * 2);
    const auto show = [&gallery](const QString& name) {
        Scene scene;
        auto* first = scene.add(QStringLiteral("/home/ana/Downloads/Holiday photos 2019.zip"));
        auto* second = scene.add(QStringLiteral("/home/ana/Downloads/Backup.part1.rar"));
        first->setupProgressViewInPreparingMode();
        second->displayNotWritableErrorWithResponseAction({});
        scene.show();
        progressOf(first);
        gallery.save(scene.window(), name);
    };
    QApplication::setFont(large);
    show(QStringLiteral("large-type"));
    QApplication::setFont(usual);
    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    show(QStringLiteral("mirrored"));
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
}

class SamplePage : public MASPreferencesViewController {
public:
    SamplePage(QString label, QString picture, QWidget* view)
        : m_label(std::move(label))
        , m_picture(std::move(picture))
        , m_view(view)
    {
    }
    QString identifier() const override { return m_label; }
    QIcon toolbarItemImage() const override { return icons::icon(m_picture); }
    QString toolbarItemLabel() const override { return m_label; }
    QWidget* view() override { return m_view; }

private:
    QString m_label;
    QString m_picture;
    QWidget* m_view;
};

class SampleDropArea : public DropArea {
    bool performDrop(const QStringList&) override { return true; }
};

QWidget* dropPage()
{
    auto* page = new QWidget;
    auto* area = new SampleDropArea;
    area->setIllustration(icons::icon(QStringLiteral("extract")));
    area->setSentence(QStringLiteral("Drop an archive to look inside"));
    area->setHint(QStringLiteral("zip, 7z, rar, tar and ninety more kinds"));
    area->button()->setText(QStringLiteral("&Open Archive…"));
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(theme::kSpaceL, 0, theme::kSpaceL, theme::kSpaceL);
    column->addWidget(area);
    return page;
}

QWidget* controlsPage()
{
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    auto* combo = new KXEncodePopButton;
    combo->buildEncodingListWithAutoDetect();
    auto* ticked = new QCheckBox(QStringLiteral("Move the archive to the Trash afterwards"));
    ticked->setChecked(true);
    auto* chosen = new QRadioButton(QStringLiteral("Beside the archive"));
    chosen->setChecked(true);
    auto* plain = new QPushButton(QStringLiteral("Plain"));
    auto* standard = new QPushButton(QStringLiteral("Default"));
    standard->setDefault(true);
    auto* off = new QPushButton(QStringLiteral("Disabled"));
    off->setEnabled(false);
    for (QWidget* widget :
         {static_cast<QWidget*>(new QLabel(QStringLiteral("Body text and a field"))),
          static_cast<QWidget*>(new PasswordField), static_cast<QWidget*>(combo), static_cast<QWidget*>(ticked),
          static_cast<QWidget*>(new QCheckBox(QStringLiteral("Open the folder"))), static_cast<QWidget*>(chosen),
          static_cast<QWidget*>(new QRadioButton(QStringLiteral("Ask each time"))), static_cast<QWidget*>(plain),
          static_cast<QWidget*>(standard), static_cast<QWidget*>(off)})
        column->addWidget(widget);
    column->addStretch(1);
    return page;
}

void windows(Gallery& gallery)
{
    SamplePage extract(QStringLiteral("Extract"), QStringLiteral("extract"), dropPage());
    SamplePage controls(QStringLiteral("Compress"), QStringLiteral("compress"), controlsPage());
    auto tabbed
        = MASPreferencesWindowController::initWithViewControllers({&extract, &controls}, QStringLiteral("Vantoro"));
    tabbed->window()->resize(640, 460);
    tabbed->window()->show();
    gallery.save(*tabbed->window(), QStringLiteral("drop-area"));
    std::atomic<bool> go{false};
    auto* overlay = new ProgressOverlay(tabbed->window());
    overlay->setLabelText(QStringLiteral("Reading the archive…"));
    overlay->setCancellable(true);
    overlay->showWhileExecuting([&go](ProgressOverlay::Work& work) {
        work.setProgress(0.4);
        work.setDetail(QStringLiteral("12,400 of 31,000 entries"));
        while (!go)
            QThread::msleep(5);
    });
    gallery.save(*tabbed->window(), QStringLiteral("overlay"));
    go = true;
    settle(100);
    tabbed->selectControllerAtIndex(1);
    gallery.save(*tabbed->window(), QStringLiteral("controls"));
    ProgressOverlay::showMessage(tabbed->window(), QStringLiteral("glyph-warning"),
                                 QStringLiteral("The password is not right"));
    gallery.save(*tabbed->window(), QStringLiteral("message"));
}

void report(Gallery& gallery)
{
    ReportWindow window;
    window.setReport(QStringLiteral("Holiday photos 2019.zip was extracted to Pictures. Two files were refused or "
                                    "damaged."),
                     QStringLiteral("/home/ana/Downloads/Holiday photos 2019.zip\n"
                                    "  • 2019/Sardinia/harbour.jpeg: the data is damaged.\n"
                                    "  • ../../.bashrc: would leave the destination folder."));
    window.show();
    gallery.save(window, QStringLiteral("report"));
    HDAlert::showAlert(HDAlert::Style::Informational, QStringLiteral("Information"),
                       QStringLiteral("ONLY preview one archive at a time"));
    settle(200);
    for (QWidget* top : QApplication::topLevelWidgets()) {
        if (auto* box = qobject_cast<QMessageBox*>(top); box && box->isVisible()) {
            gallery.save(*box, QStringLiteral("alert"));
            box->buttons().first()->click();
        }
    }
    settle(100);
}

void icon(Gallery& gallery)
{
    QWidget sheet;
    auto* grid = new QGridLayout(&sheet);
    int column = 0;
    for (const char* name : {"vantoro", "archive-zip", "archive-7z", "archive-rar", "archive-tar", "archive-generic",
                             "folder", "extract", "compress", "stIconTemplate"}) {
        int row = 0;
        for (const int edge : {16, 24, 40, 64, 128}) {
            auto* picture = new QLabel;
            picture->setPixmap(icons::pixmap(QString::fromLatin1(name), edge, 1));
            grid->addWidget(picture, row++, column, Qt::AlignCenter);
        }
        ++column;
    }
    int place = 0;
    for (const char* name : {"cancel",   "pause", "resume",  "eye",      "eye-off", "caps", "warning", "error",
                             "info",     "lock",  "text",    "folder",   "search",  "plus", "check",   "trash",
                             "settings", "copy",  "extract", "compress", "chevron", "help"}) {
        auto* picture = new QLabel;
        picture->setPixmap(icons::glyph(QStringLiteral("glyph-") + QString::fromLatin1(name),
                                        theme::colors(sheet.palette()).text, 32, 1));
        grid->addWidget(picture, 6 + place / 10, place % 10, Qt::AlignCenter);
        ++place;
    }
    sheet.show();
    gallery.save(sheet, QStringLiteral("icons"));
}

}

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 2) {
        qCritical("usage: vantoro-gallery FOLDER [FONT | --quick]");
        return 2;
    }
    if (arguments.value(2) == QLatin1String("--quick"))
        g_patience = 20; // only whether all of it can be drawn
    else if (arguments.size() > 2)
        QApplication::setFont(QFont(arguments.at(2), 10));
    const QDir folder(arguments.at(1));
    if (!folder.mkpath(QStringLiteral(".")))
        return 1;
    installTranslations(application);
    Appearance::instance().install(application);
    QApplication::setQuitOnLastWindowClosed(false);
    for (const bool dark : {false, true}) {
        Appearance::instance().setScheme(dark ? Appearance::Scheme::Dark : Appearance::Scheme::Light);
        Gallery gallery(folder, dark ? QStringLiteral("dark") : QStringLiteral("light"));
        icon(gallery);
        taskList(gallery);
        narrow(gallery);
        questions(gallery);
        encodingList(gallery);
        otherReaders(gallery);
        windows(gallery);
        report(gallery);
    }
    return 0;
}

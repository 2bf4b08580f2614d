// The compression page in its states, light and dark, saved as pictures: bin/vantoro-compress-gallery FOLDER
#include "compress/CompressHost.h"
#include "compress/CompressWindow.h"
#include "compress/KXPackViewController.h"
#include "compress/PackTable.h"
#include "compress/PreviewPanel.h"
#include "tests/support/ScriptedPanels.h"
#include "widgets/Appearance.h"
#include "widgets/FlatButton.h"
#include "widgets/Icons.h"
#include "widgets/MASPreferencesWindowController.h"
#include "widgets/PasswordField.h"
#include "widgets/ProgressOverlay.h"
#include "widgets/Translation.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThread>

using namespace vantoro;

namespace {

int g_patience = 1;

void settle(int milliseconds)
{
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < milliseconds / g_patience) {
        QApplication::processEvents(QEventLoop::AllEvents, 10);
        QThread::msleep(2);
    }
}

class NoHost final : public CompressHost {
    void compressionBegan() override {}
    void compressionEnded() override {}
};

QStringList makeFiles(const QTemporaryDir& folder)
{
    const QDir root(folder.path());
    QStringList paths;
    for (const auto& [name, size] : {std::pair{"Sardinia 2019/harbour.jpeg", 5'300'000},
                                     {"Letters/2023/To the landlord, with the bill.odt", 84'000},
                                     {"Budget.ods", 41'200},
                                     {"notes.txt", 612},
                                     {"Recording of the meeting on the second of November.flac", 38'000'000},
                                     {"גיבוי.tar", 9'000'000},
                                     {"report.pdf", 1'204'000}}) {
        const QString path = root.filePath(QString::fromUtf8(name));
        root.mkpath(QFileInfo(path).path());
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            qFatal("cannot write %s", qPrintable(path));
        file.resize(size);
        if (path.endsWith(QLatin1String(".flac"))) {
            QByteArray noise(size, Qt::Uninitialized);
            QRandomGenerator(1).fillRange(reinterpret_cast<quint32*>(noise.data()), noise.size() / 4);
            file.write(noise);
        }
        const QString top = QString::fromUtf8(name).section(QLatin1Char('/'), 0, 0);
        paths += root.filePath(top);
    }
    QFile notes(root.filePath(QStringLiteral("notes.txt")));
    if (notes.open(QIODevice::WriteOnly))
        notes.write("Things to pack:\n\n  - passports\n  - the blue rope\n  - sun cream\n");
    return paths;
}

class Pictures {
public:
    Pictures(QDir folder, QString scheme) : m_folder(std::move(folder)), m_scheme(std::move(scheme)) {}
    void save(QWidget& widget, const QString& name) const
    {
        settle(500);
        const QString path = m_folder.filePath(QStringLiteral("compress-%1-%2.png").arg(name, m_scheme));
        if (!widget.grab().save(path))
            qFatal("cannot write %s", qPrintable(path));
    }

private:
    QDir m_folder;
    QString m_scheme;
};

/// Stands for the other page of the window.
class OtherPage final : public MASPreferencesViewController {
    QString identifier() const override { return QStringLiteral("Extract"); }
    QIcon toolbarItemImage() const override { return icons::icon(QStringLiteral("extract")); }
    QString toolbarItemLabel() const override { return QStringLiteral("Extract"); }
    QWidget* view() override { return new QWidget; }
};

template <class Widget> Widget* find(QWidget& in, const char* name)
{
    for (auto* widget : in.findChildren<Widget*>()) {
        if (widget->accessibleName() == QLatin1String(name) || widget->objectName() == QLatin1String(name))
            return widget;
    }
    qFatal("no %s", name);
}

/// Starts, looks, and stops again.
void takeProgressPicture(const Pictures& pictures, KXPackViewController& page, QWidget& window, ScriptedPanels& panels)
{
    const QTemporaryDir out;
    panels.choose(out.path());
    find<QComboBox>(page, "Format")->setCurrentIndex(1); // 7z
    page.toggleAchive();
    settle(400);
    pictures.save(window, QStringLiteral("progress"));
    for (auto* overlay : window.findChildren<ProgressOverlay*>()) {
        for (auto* button : overlay->findChildren<FlatButton*>())
            button->click();
    }
    while (page.isBusy())
        settle(50);
}

void takePictures(const Pictures& pictures, const QStringList& files)
{
    NoHost host;
    auto& page = *new KXPackViewController(host); // the window's soon
    ScriptedPanels panels;
    page.setPanels(&panels);
    OtherPage other;
    auto tabbed = MASPreferencesWindowController::initWithViewControllers({&other, &page}, QStringLiteral("Vantoro"));
    tabbed->selectControllerAtIndex(1);
    QWidget& window = *tabbed->window();
    window.resize(720, 500);
    window.show();
    pictures.save(window, QStringLiteral("empty"));
    page.obtainFilesPath(files);
    settle(800);
    find<PasswordField>(page, "Password")->setText(QStringLiteral("blue rope at dawn"));
    pictures.save(window, QStringLiteral("list"));
    auto* kinds = find<QComboBox>(page, "Format");
    kinds->showPopup();
    pictures.save(*kinds->view()->window(), QStringLiteral("kinds"));
    kinds->hidePopup();
    page.openCompressWindow();
    auto* options = page.findChild<CompressWindow*>();
    options->repeatField()->setText(QStringLiteral("blue rope at down"));
    options->startButton()->click();
    pictures.save(*options, QStringLiteral("options"));
    options->cancelButton()->click();
    takeProgressPicture(pictures, page, window, panels);
    kinds->setCurrentIndex(kinds->findText(QStringLiteral("tar.gz")));
    window.resize(560, 420);
    pictures.save(window, QStringLiteral("narrow"));
    for (const char* name : {"notes.txt", "report.pdf"}) {
        const auto row = files.indexOf(QRegularExpression(QStringLiteral(".*/") + QLatin1String(name)));
        emit page.findChild<PackTable*>()->previewRequested(int(row));
        pictures.save(PreviewPanel::shared(), QStringLiteral("preview-") + QString::fromLatin1(name).left(4));
        page.togglePreviewPanel();
    }
}

}

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 2) {
        qCritical("usage: vantoro-compress-gallery FOLDER [--quick]");
        return 2;
    }
    if (arguments.value(2) == QLatin1String("--quick"))
        g_patience = 20;
    const QDir folder(arguments.at(1));
    if (!folder.mkpath(QStringLiteral(".")))
        return 1;
    QStandardPaths::setTestModeEnabled(true);
    installTranslations(application);
    Appearance::instance().install(application);
    QApplication::setQuitOnLastWindowClosed(false);
    const QTemporaryDir files;
    const QStringList paths = makeFiles(files);
    for (const bool dark : {false, true}) {
        Appearance::instance().setScheme(dark ? Appearance::Scheme::Dark : Appearance::Scheme::Light);
        takePictures(Pictures(folder, dark ? QStringLiteral("dark") : QStringLiteral("light")), paths);
    }
    return 0;
}

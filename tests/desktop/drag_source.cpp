// A window from which files can be dragged: drag-source X Y FILE... It fills the small square at X, Y.
#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>
#include <QWidget>

namespace {

class Source final : public QWidget {
public:
    explicit Source(QList<QUrl> files)
        : QWidget(nullptr, Qt::Window | Qt::BypassWindowManagerHint)
        , m_files(std::move(files))
    {
        setWindowTitle(QStringLiteral("drag source"));
    }

protected:
    void mouseMoveEvent(QMouseEvent*) override
    {
        auto* offer = new QMimeData;
        offer->setUrls(m_files);
        auto* drag = new QDrag(this);
        drag->setMimeData(offer);
        drag->exec(Qt::CopyAction);
    }

private:
    QList<QUrl> m_files;
};

}

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 4) {
        qCritical("usage: drag-source X Y FILE...");
        return 2;
    }
    QList<QUrl> files;
    for (const QString& path : arguments.mid(3))
        files += QUrl::fromLocalFile(path);
    Source source(files);
    source.setGeometry(arguments.at(1).toInt(), arguments.at(2).toInt(), 80, 80);
    source.show();
    return QApplication::exec();
}

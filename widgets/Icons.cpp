#include "widgets/Icons.h"

#include "widgets/Theme.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QMimeDatabase>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QStyle>
#include <QSvgRenderer>

#include <algorithm>
#include <array>
#include <cmath>

static void loadResources()
{
    Q_INIT_RESOURCE(vantoro); // the library is static: nothing else would pull the pictures in
}

namespace vantoro::icons {
namespace {

const char* const kApplicationIcon = "org.vantoro.vantoro";

QString path(const QString& name)
{
    static const bool loaded = (loadResources(), true);
    Q_UNUSED(loaded)
    return QStringLiteral(":/icons/%1.svg").arg(name);
}

QPixmap render(const QByteArray& svg, int edge, qreal devicePixelRatio)
{
    const int pixels = static_cast<int>(std::lround(edge * devicePixelRatio));
    QPixmap result(pixels, pixels);
    result.fill(Qt::transparent);
    QSvgRenderer renderer(svg);
    QPainter painter(&result);
    renderer.render(&painter);
    painter.end();
    result.setDevicePixelRatio(devicePixelRatio);
    return result;
}

QByteArray read(const QString& name)
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

struct Family {
    const char* ending;
    const char* icon;
};

/// Looked up in this order by the end of the lower-case name.
constexpr std::array kFamilies{
    Family{".tar.gz", "archive-tar"},  Family{".tar.bz2", "archive-tar"}, Family{".tar.xz", "archive-tar"},
    Family{".tar.zst", "archive-tar"}, Family{".7z", "archive-7z"},       Family{".7z.001", "archive-7z"},
    Family{".rar", "archive-rar"},     Family{".cbr", "archive-rar"},     Family{".zip", "archive-zip"},
    Family{".zipx", "archive-zip"},    Family{".cbz", "archive-cbz"},     Family{".jar", "archive-jar"},
    Family{".apk", "archive-apk"},     Family{".tar", "archive-tar"},     Family{".tgz", "archive-tar"},
    Family{".gz", "archive-gz"},       Family{".tbz", "archive-tbz"},     Family{".tbz2", "archive-tbz"},
    Family{".bz2", "archive-bz2"},     Family{".bz", "archive-bz"},       Family{".txz", "archive-tar"},
    Family{".xz", "archive-xz"},       Family{".lzma", "archive-lzma"},   Family{".xar", "archive-xar"},
    Family{".exe", "archive-exe"},     Family{".bin", "archive-bin"},     Family{".z", "archive-z"},
};

struct TypeRule {
    const char* type; // a MIME type or the beginning of one
    const char* image;
};

/// The first that fits.
constexpr std::array kFileImages{
    TypeRule{"image/", "file-image"},
    TypeRule{"audio/", "file-audio"},
    TypeRule{"video/", "file-video"},
    TypeRule{"font/", "file-font"},
    TypeRule{"application/pdf", "file-pdf"},
    TypeRule{"application/json", "file-code"},
    TypeRule{"application/xml", "file-code"},
    TypeRule{"application/javascript", "file-code"},
    TypeRule{"application/x-shellscript", "file-code"},
    TypeRule{"application/x-sharedlib", "file-program"},
    TypeRule{"application/x-executable", "file-program"},
    TypeRule{"application/x-ms-dos-executable", "file-program"},
    TypeRule{"application/x-msdownload", "file-program"},
    TypeRule{"text/x-", "file-code"},
    TypeRule{"text/html", "file-code"},
    TypeRule{"text/css", "file-code"},
    TypeRule{"text/", "file-text"},
    TypeRule{"application/msword", "file-text"},
    TypeRule{"application/rtf", "file-text"},
    TypeRule{"application/vnd.oasis.opendocument.text", "file-text"},
    TypeRule{"application/vnd.openxmlformats-officedocument.wordprocessingml", "file-text"},
};

/// Draws a picture or a glyph when it is asked for. The toolkit's own engine would load its plug-ins at the start for
/// the same.
class PictureEngine final : public QIconEngine {
public:
    enum class Kind { Picture, Glyph };

    PictureEngine(QString name, Kind kind) : m_name(std::move(name)), m_kind(kind) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        painter->save();
        if (mode == QIcon::Disabled)
            painter->setOpacity(painter->opacity() * 0.4);
        const int edge = qMin(rect.width(), rect.height());
        const QRect place = QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, QSize(edge, edge), rect);
        const qreal ratio = painter->device()->devicePixelRatioF();
        painter->drawPixmap(place,
                            m_kind == Kind::Picture ? icons::pixmap(m_name, edge, ratio)
                                                    : icons::glyph(m_name, ink(), edge, ratio));
        painter->restore();
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        return scaledPixmap(size, mode, state, 1);
    }
    /// `size` is in pixels of the screen already.
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal) override
    {
        QPixmap result(size);
        result.fill(Qt::transparent);
        QPainter painter(&result);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return result;
    }
    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override { return m_sizes; }
    QIconEngine* clone() const override { return new PictureEngine(m_name, m_kind); }
    QString key() const override { return QStringLiteral("vantoro"); }

private:
    static QColor ink() { return theme::colors(QGuiApplication::palette()).textSecondary; }

    QString m_name;
    Kind m_kind;
    QList<QSize> m_sizes{{16, 16}, {32, 32}, {48, 48}, {128, 128}};
};

}

QIcon icon(const QString& name) { return QIcon(new PictureEngine(name, PictureEngine::Kind::Picture)); }

QIcon glyphIcon(const QString& name) { return QIcon(new PictureEngine(name, PictureEngine::Kind::Glyph)); }

QPixmap pixmap(const QString& name, int edge, qreal devicePixelRatio)
{
    const QString key = QStringLiteral("vantoro/%1/%2/%3").arg(name).arg(edge).arg(devicePixelRatio);
    QPixmap result;
    if (!QPixmapCache::find(key, &result)) {
        result = render(read(name), edge, devicePixelRatio);
        QPixmapCache::insert(key, result);
    }
    return result;
}

QPixmap glyph(const QString& name, const QColor& color, int edge, qreal devicePixelRatio)
{
    const QString hex = color.name(QColor::HexArgb);
    const QString key = QStringLiteral("vantoro/%1/%2/%3/%4").arg(name, hex).arg(edge).arg(devicePixelRatio);
    QPixmap result;
    if (!QPixmapCache::find(key, &result)) {
        result = render(read(name), edge, devicePixelRatio);
        QPainter painter(&result);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(QRect(QPoint(), QSize(edge, edge)), color);
        painter.end();
        QPixmapCache::insert(key, result);
    }
    return result;
}

QIcon application() { return QIcon::fromTheme(QString::fromLatin1(kApplicationIcon), icon(QStringLiteral("vantoro"))); }

QIcon forArchive(const QString& fileName)
{
    const QString lower = fileName.toLower();
    for (const auto& family : kFamilies) {
        if (lower.endsWith(QLatin1String(family.ending)))
            return icon(QString::fromLatin1(family.icon));
    }
    return icon(QStringLiteral("archive-generic"));
}

QIcon forFile(const QString& fileName)
{
    const QMimeType type = QMimeDatabase().mimeTypeForFile(fileName, QMimeDatabase::MatchExtension);
    const auto* rule = std::ranges::find_if(
        kFileImages, [&](const TypeRule& row) { return type.name().startsWith(QLatin1String(row.type)); });
    if (rule != kFileImages.end())
        return icon(QString::fromLatin1(rule->image));
    const bool isArchive = type.genericIconName() == QLatin1String("package-x-generic");
    return isArchive ? forArchive(fileName) : icon(QStringLiteral("file-generic"));
}

}

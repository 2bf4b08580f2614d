#include "files/DateText.h"
#include "files/Exceptions.h"
#include "files/KXFileWrapper.h"
#include "files/KXUtilities.h"
#include "files/SystemError.h"

#include <array>

namespace vantoro {
namespace {

using SizeOf = std::optional<double> (*)(const QString& path, QString* error);

std::optional<QString> formatted(SizeOf sizeOf, const QString& path, QString* error)
{
    const auto size = sizeOf(path, error);
    return size && KXFileWrapper::isNotError(error) ? std::optional(KXFileWrapper::sizeFormatted(*size)) : std::nullopt;
}

}

std::optional<double> KXFileWrapper::sizeOfItemAtPath(const QString& path, QString* error)
{
    const QVariant size = attributeOfItemAtPath(path, FileAttribute::kSize, error);
    return size.isValid() ? std::optional(static_cast<double>(size.toLongLong())) : std::nullopt;
}

std::optional<double> KXFileWrapper::sizeOfFileAtPath(const QString& path, QString* error)
{
    return isFileItemAtPath(path, error) && isNotError(error) ? sizeOfItemAtPath(path, error) : std::nullopt;
}

std::optional<double> KXFileWrapper::sizeOfDirectoryAtPath(const QString& path, QString* error)
{
    if (!isDirectoryItemAtPath(path, error) || !isNotError(error))
        return std::nullopt;
    auto sum = sizeOfItemAtPath(path, error);
    for (const QString& item : listItemsInDirectoryAtPath(path, true)) {
        const auto size = sizeOfItemAtPath(item, error);
        if (!sum || !size)
            return std::nullopt;
        *sum += *size;
    }
    return sum;
}

QString KXFileWrapper::sizeFormatted(double size)
{
    constexpr std::array units{"bytes", "KB", "MB", "GB", "TB"};
    std::size_t unit = 0;
    for (; size > 1024.0; ++unit)
        size *= 1.0 / 1024;
    if (unit >= units.size())
        throw NamedException(QStringLiteral("Invalid size"), QStringLiteral("there is no unit past TB."));
    return QString::asprintf(unit < 2 ? "%4.0f %s" : "%4.2f %s", size, units[unit]);
}

std::optional<QString> KXFileWrapper::sizeFormattedOfItemAtPath(const QString& path, QString* error)
{
    return formatted(&sizeOfItemAtPath, path, error);
}

std::optional<QString> KXFileWrapper::sizeFormattedOfFileAtPath(const QString& path, QString* error)
{
    return formatted(&sizeOfFileAtPath, path, error);
}

std::optional<QString> KXFileWrapper::sizeFormattedOfDirectoryAtPath(const QString& path, QString* error)
{
    return formatted(&sizeOfDirectoryAtPath, path, error);
}

QString KXFileWrapper::sizeFormatWithNumber(qint64 bytes) { return KXUtilities::sizeFormatForNumber(bytes); }

QString KXFileWrapper::stringLongFromDate(const QDateTime& date)
{
    return dateText(date, QStringLiteral("-MM-dd HH:mm:ss"));
}

QString KXFileWrapper::getCurrentTimes()
{
    const QString now = stringLongFromDate(QDateTime::currentDateTime());
    qInfo("currentTimeString =  %s", qUtf8Printable(now));
    return now;
}

}

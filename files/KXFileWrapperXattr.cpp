#include "files/KXFileWrapper.h"

#include <QFile>
#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <sys/xattr.h>

namespace vantoro {
namespace {

constexpr std::array kNameSpaces{"user.", "trusted.", "security.", "system."};

QByteArray attributeName(const QString& key)
{
    const QByteArray name = key.toUtf8();
    const bool isWhole = std::ranges::any_of(kNameSpaces, [&](const char* space) { return name.startsWith(space); });
    return isWhole ? name : QByteArray("user.") + name;
}

/// Calls a reading system call with room for what it says it has, again when that grew meanwhile.
template <class Call> std::optional<QByteArray> readWhole(Call call)
{
    for (;;) {
        const ssize_t size = call(nullptr, std::size_t{0});
        if (size <= 0)
            return size < 0 ? std::nullopt : std::optional(QByteArray(""));
        QByteArray bytes(size, Qt::Uninitialized);
        const ssize_t read = call(bytes.data(), static_cast<std::size_t>(size));
        if (read >= 0)
            return bytes.left(read);
        if (errno != ERANGE)
            return std::nullopt;
    }
}

}

QVariantMap KXFileWrapper::xattrOfItemAtPath(const QString& path)
{
    const QByteArray native = QFile::encodeName(path);
    const auto names
        = readWhole([&](char* into, std::size_t room) { return ::listxattr(native.constData(), into, room); });
    QVariantMap values;
    for (const QByteArray& name : names.value_or(QByteArray()).split('\0')) {
        const QString key = QString::fromUtf8(name);
        const auto value = name.isEmpty() ? std::nullopt : xattrOfItemAtPathGetValueForKey(path, key);
        if (value)
            values.insert(key, *value);
    }
    return values;
}

std::optional<QString> KXFileWrapper::xattrOfItemAtPathGetValueForKey(const QString& path, const QString& key)
{
    const QByteArray native = QFile::encodeName(path);
    const QByteArray name = attributeName(key);
    const auto value = readWhole(
        [&](char* into, std::size_t room) { return ::getxattr(native.constData(), name.constData(), into, room); });
    if (!value)
        return std::nullopt;
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(*value);
    return decoder.hasError() ? std::nullopt : std::optional(text.isNull() ? QStringLiteral("") : text);
}

bool KXFileWrapper::xattrOfItemAtPathHasValueForKey(const QString& path, const QString& key)
{
    return xattrOfItemAtPathGetValueForKey(path, key).has_value();
}

bool KXFileWrapper::xattrOfItemAtPathRemoveValueForKey(const QString& path, const QString& key)
{
    return ::removexattr(QFile::encodeName(path).constData(), attributeName(key).constData()) == 0;
}

bool KXFileWrapper::xattrOfItemAtPathSetValueForKey(const QString& path, const QString& value, const QString& key)
{
    if (value.isNull())
        return false;
    const QByteArray bytes = value.toUtf8().left(value.size());
    return ::setxattr(QFile::encodeName(path).constData(), attributeName(key).constData(), bytes.constData(),
                      static_cast<std::size_t>(bytes.size()), 0)
        == 0;
}

}

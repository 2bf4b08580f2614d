#pragma once

#include <QString>

namespace vantoro {

QString lastPathComponent(const QString& path);
/// The folder that holds the item; "/" for an item of the root.
QString deletingLastPathComponent(const QString& path);
/// Without the dot; empty where there is none. A name that only begins with a dot has no extension.
QString pathExtension(const QString& path);
QString deletingPathExtension(const QString& path);
QString appendingPathComponent(const QString& path, const QString& component);
/// Whether the path is the folder or lies beneath it; by text alone: both are absolute and resolved.
bool pathLiesInside(const QString& path, const QString& folder);
/// Absolute, without "." and ".." and with every symbolic link resolved that exists; null when a link leads nowhere or
/// the path is empty.
QString resolvingSymlinks(const QString& path);

}

#pragma once

#include <QObject>

class QApplication;
class QDBusVariant;

namespace vantoro {

/// Follows the desktop's wishes: light or dark, and whether things may move. One per process, main thread only.
class Appearance : public QObject {
    Q_OBJECT

public:
    enum class Scheme { NoPreference, Dark, Light };

    static Appearance& instance();

    /// Gives the application Vantoro's style, and a light or dark palette, unless the desktop's theme supplies its own;
    /// then listens for changes. Call once, before the first window. Without a session bus the light palette stays.
    void install(QApplication& application);

    Scheme scheme() const { return m_scheme; }
    void setScheme(Scheme scheme);

    bool reducedMotion() const;
    void setReducedMotion(bool reduced);
    /// The length to give an animation: 0 when nothing may move.
    int duration(int milliseconds) const { return reducedMotion() ? 0 : milliseconds; }

signals:
    void changed();

private slots:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    Appearance() = default;
    void readPortal();
    /// Applies the wish whenever it comes.
    void readLater(const char* key);
    bool apply(const QString& key, const QVariant& value);

    Scheme m_scheme = Scheme::NoPreference;
    bool m_reducedMotion = false;
    bool m_ownsPalette = false;
};

}

#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace vantoro {

/// One desktop notification at a time; a new one takes the place of the last. Does nothing where no server runs.
/// Main thread.
class Notifications : public QObject {
    Q_OBJECT
public:
    explicit Notifications(const QString& applicationId, QObject* parent = nullptr);

    struct Button {
        QString key; ///< "default" is a click on the notification itself
        QString label;
    };
    void notify(const QString& summary, const QString& body, const std::vector<Button>& buttons, bool isError);

signals:
    /// `activationToken` may be empty.
    void actionInvoked(const QString& key, const QString& activationToken);

private slots:
    void serverActionInvoked(uint id, const QString& key);
    void serverActivationToken(uint id, const QString& token);

private:
    QStringList capabilities();

    const QString m_applicationId;
    uint m_id = 0; // of the notification that is shown
    QString m_token;
    std::optional<QStringList> m_capabilities;
};

}

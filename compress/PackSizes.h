#pragma once

#include <QHash>
#include <QObject>

#include <memory>
#include <optional>

namespace vantoro {

/// The sizes of files and folders, found out on other threads. Main thread.
class PackSizes final : public QObject {
    Q_OBJECT

public:
    explicit PackSizes(QObject* parent = nullptr);
    /// What still runs comes to an end soon, and its result goes nowhere.
    ~PackSizes() override;

    /// The size in bytes; nothing when it is not known yet: sizeKnown() will tell.
    std::optional<qint64> sizeOf(const QString& path);
    /// Sizes are found out anew from here on.
    void forget();

signals:
    void sizeKnown(const QString& path, qint64 size);

private:
    struct Round;
    void start(const QString& path);

    QHash<QString, std::optional<qint64>> m_sizes; // nothing in it: being found out
    std::shared_ptr<Round> m_round;
};

}

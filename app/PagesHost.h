#pragma once

#include "browse/BrowserHost.h"
#include "compress/CompressHost.h"

#include <QObject>

namespace vantoro {

class AppDelegate;

/// What the pages ask of the program.
class PagesHost final : public QObject, public BrowserHost, public CompressHost {
    Q_OBJECT
public:
    void setDelegate(AppDelegate& delegate) { m_delegate = &delegate; }

    void unarchiveZip(const QString& path) override;
    void unarchiveZip(const QString& path, std::shared_ptr<const std::vector<quint64>> numArray) override;
    void openPrefsWindow() override;
    void setMainTableViewEnable(bool enable) override;
    void compressionBegan() override;
    void compressionEnded() override;

    bool isCompressing() const { return m_compressions > 0; }

signals:
    void compressingChanged(bool isCompressing);

private:
    AppDelegate* m_delegate = nullptr;
    int m_compressions = 0;
};

}

#include "app/PagesHost.h"

#include "app/AppDelegate.h"

namespace vantoro {

void PagesHost::unarchiveZip(const QString& path) { m_delegate->unarchiveZip(path); }

void PagesHost::unarchiveZip(const QString& path, std::shared_ptr<const std::vector<quint64>> numArray)
{
    m_delegate->unarchiveZip(path, std::move(numArray));
}

void PagesHost::openPrefsWindow() { m_delegate->openPrefsWindow(); }

void PagesHost::setMainTableViewEnable(bool enable) { m_delegate->setMainTableViewEnable(enable); }

void PagesHost::compressionBegan()
{
    if (++m_compressions == 1)
        emit compressingChanged(true);
}

void PagesHost::compressionEnded()
{
    if (--m_compressions == 0)
        emit compressingChanged(false);
}

}

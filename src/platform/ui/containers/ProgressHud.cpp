#include "platform/ui/containers/ProgressHud.h"

#include "platform/modal/InputGate.h"

namespace orvel {

ProgressHud &ProgressHud::shared()
{
    static ProgressHud hud;
    return hud;
}

ProgressHud *ProgressHud::create(QQmlEngine *, QJSEngine *)
{
    QQmlEngine::setObjectOwnership(&shared(), QQmlEngine::CppOwnership);
    return &shared();
}

void ProgressHud::showWithStatus(const QString &status, MaskType mask)
{
    if (!m_visible)
        InputGate::shared().hold();
    m_visible = true;
    m_status = status;
    m_mask = mask;
    Q_EMIT changed();
}

void ProgressHud::dismiss()
{
    if (!m_visible)
        return;
    m_visible = false;
    InputGate::shared().release();
    Q_EMIT changed();
}

} // namespace orvel

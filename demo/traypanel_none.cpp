#include "traypanel.h"

bool TrayPanel::takeTray()
{
    return false;
}

void TrayPanel::dock(quint32) {}

bool TrayPanel::nativeEventFilter(const QByteArray &, void *, long *)
{
    return false;
}

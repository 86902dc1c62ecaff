import QtQuick 2.15

// Here so that the name resolves; it shows nothing.
Item {}

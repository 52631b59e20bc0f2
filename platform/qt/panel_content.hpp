#pragma once

#include "platform/panels.hpp"

#include <QUrl>
#include <QVariantMap>

namespace orvel::qt {

/// What fills a panel: a QML file and what it is given.
struct PanelContent {
    QUrl source;
    QVariantMap properties;
};

/// Where views are handed over to the panels of a desktop. Main thread.
class PanelContentHost {
public:
    virtual ~PanelContentHost() = default;

    /// To be called before the panel of that id is made.
    virtual void setContent(PanelId id, PanelContent content) = 0;
    /// Takes the content out again, before what it was given goes away.
    virtual void removeContent(PanelId id) = 0;
};

}  // namespace orvel::qt

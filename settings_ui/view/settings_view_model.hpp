#pragma once

#include "platform/base/published.hpp"
#include "settings_ui/view/drawn_key_list.hpp"
#include "settings_ui/view/feature_card_list.hpp"
#include "settings_ui/view/onboarding_view_model.hpp"

#include <QAbstractListModel>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace orvel {

class SettingsModel;

namespace settings_view {

/// What the settings panel shows, as QML reads it. Settings that another process changes show
/// while the panel is on screen.
class SettingsViewModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString title READ title CONSTANT FINAL)
    Q_PROPERTY(QString subtitle READ subtitle CONSTANT FINAL)
    Q_PROPERTY(QString section READ section CONSTANT FINAL)
    Q_PROPERTY(QString deleteLabel READ deleteLabel CONSTANT FINAL)
    /// The cards with a live text, which come first, and the others.
    Q_PROPERTY(QAbstractItemModel* specialCards READ specialCards CONSTANT FINAL)
    Q_PROPERTY(QAbstractItemModel* cards READ cards CONSTANT FINAL)
    Q_PROPERTY(QAbstractItemModel* keys READ keys CONSTANT FINAL)
    Q_PROPERTY(QList<QString> mapMenu READ mapMenu CONSTANT FINAL)
    Q_PROPERTY(QList<QString> strategyMenu READ strategyMenu CONSTANT FINAL)
    Q_PROPERTY(QList<QString> comboMenu READ comboMenu CONSTANT FINAL)
    Q_PROPERTY(QList<QString> sacrificeMenu READ sacrificeMenu CONSTANT FINAL)
    Q_PROPERTY(bool isAllOn READ isAllOn NOTIFY changed FINAL)
    Q_PROPERTY(bool isEjectOn READ isEjectOn NOTIFY changed FINAL)
    Q_PROPERTY(bool isCombo READ isCombo NOTIFY changed FINAL)
    Q_PROPERTY(int strategy READ strategy NOTIFY changed FINAL)
    Q_PROPERTY(int comboModifier READ comboModifier NOTIFY changed FINAL)
    Q_PROPERTY(int sacrificeKey READ sacrificeKey NOTIFY changed FINAL)
    Q_PROPERTY(QString comboLabel READ comboLabel NOTIFY changed FINAL)
    Q_PROPERTY(QString sacrificeLabel READ sacrificeLabel NOTIFY changed FINAL)
    Q_PROPERTY(QString deleteKeyFace READ deleteKeyFace NOTIFY changed FINAL)
    /// Label and target of every changed key, one after the other.
    Q_PROPERTY(QList<QString> changedMaps READ changedMaps NOTIFY changed FINAL)
    /// What stands in place of everything else while something essential is missing.
    Q_PROPERTY(orvel::settings_view::OnboardingViewModel* onboarding READ onboarding CONSTANT FINAL)
    Q_PROPERTY(bool isPaused READ isPaused NOTIFY isPausedChanged FINAL)
    Q_PROPERTY(bool isShown READ isShown WRITE setShown NOTIFY isShownChanged FINAL)
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")

public:
    SettingsViewModel(SettingsModel& settings, OnboardingModel& onboarding,
                      const Published<bool>& isEnginePaused, std::function<void()> closePanel);

    [[nodiscard]] QString title() const;
    [[nodiscard]] QString subtitle() const;
    [[nodiscard]] QString section() const;
    [[nodiscard]] QString deleteLabel() const;
    [[nodiscard]] QAbstractItemModel* specialCards() { return &specialCards_; }
    [[nodiscard]] QAbstractItemModel* cards() { return &cards_; }
    [[nodiscard]] QAbstractItemModel* keys() { return &keys_; }
    [[nodiscard]] QStringList mapMenu() const;
    [[nodiscard]] QStringList strategyMenu() const;
    [[nodiscard]] QStringList comboMenu() const;
    [[nodiscard]] QStringList sacrificeMenu() const;

    [[nodiscard]] bool isAllOn() const { return state_.isAllOn; }
    [[nodiscard]] bool isEjectOn() const { return state_.isEjectOn; }
    [[nodiscard]] bool isCombo() const { return state_.strategy == 0; }
    [[nodiscard]] int strategy() const { return state_.strategy; }
    [[nodiscard]] int comboModifier() const { return state_.comboModifier; }
    [[nodiscard]] int sacrificeKey() const { return state_.sacrificeKey; }
    [[nodiscard]] QString comboLabel() const;
    [[nodiscard]] QString sacrificeLabel() const;
    [[nodiscard]] QString deleteKeyFace() const { return state_.deleteKeyFace; }
    [[nodiscard]] QStringList changedMaps() const { return state_.changedMaps; }
    [[nodiscard]] OnboardingViewModel* onboarding() { return &onboarding_; }
    [[nodiscard]] bool isPaused() const { return isEnginePaused_; }
    [[nodiscard]] bool isShown() const { return isShown_; }
    void setShown(bool isShown);

    /// `place` counts all cards of the grid.
    Q_INVOKABLE void setCard(int place, bool isOn);
    Q_INVOKABLE void setMaster(bool isOn);
    Q_INVOKABLE void setMap(int row, int choice);
    Q_INVOKABLE void setStrategy(int choice);
    Q_INVOKABLE void setComboModifier(int choice);
    Q_INVOKABLE void setSacrificeKey(int choice);
    Q_INVOKABLE void resume();
    Q_INVOKABLE void close();

signals:
    void changed();
    void isPausedChanged();
    void isShownChanged();

private:
    /// What the settings say, as far as it is no list.
    struct State {
        bool isAllOn = false;
        bool isEjectOn = false;
        int strategy = 0;
        int comboModifier = 0;
        int sacrificeKey = 0;
        QString deleteKeyFace;
        QStringList changedMaps;
        bool operator==(const State&) const = default;
    };
    [[nodiscard]] State readState() const;
    void refresh();

    SettingsModel& settings_;
    const Published<bool>& isEnginePaused_;
    std::function<void()> closePanel_;
    OnboardingViewModel onboarding_;
    FeatureCardList specialCards_;
    FeatureCardList cards_;
    DrawnKeyList keys_;
    State state_;
    QTimer outsideChanges_;
    bool isShown_ = false;
    Subscription revisionSubscription_;
    Subscription pauseSubscription_;
};

}  // namespace settings_view
}  // namespace orvel

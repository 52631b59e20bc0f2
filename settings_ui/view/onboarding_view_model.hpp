#pragma once

#include "platform/base/published.hpp"
#include "settings_ui/view/finding_list.hpp"

#include <QAbstractListModel>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace orvel {

class OnboardingModel;

namespace settings_view {

/// What is missing, as QML reads it.
class OnboardingViewModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isNeeded READ isNeeded NOTIFY isNeededChanged FINAL)
    Q_PROPERTY(bool isComplete READ isComplete NOTIFY findingsChanged FINAL)
    Q_PROPERTY(QString title READ title NOTIFY findingsChanged FINAL)
    Q_PROPERTY(QString subtitle READ subtitle NOTIFY findingsChanged FINAL)
    Q_PROPERTY(QString there READ there CONSTANT FINAL)
    Q_PROPERTY(QString retryText READ retryText CONSTANT FINAL)
    Q_PROPERTY(QString laterText READ laterText CONSTANT FINAL)
    Q_PROPERTY(QString openSettingsText READ openSettingsText CONSTANT FINAL)
    Q_PROPERTY(QAbstractItemModel* findings READ findings CONSTANT FINAL)
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")

public:
    explicit OnboardingViewModel(OnboardingModel& model);

    [[nodiscard]] bool isNeeded() const;
    [[nodiscard]] bool isComplete() const;
    [[nodiscard]] QString title() const;
    [[nodiscard]] QString subtitle() const;
    [[nodiscard]] QString there() const;
    [[nodiscard]] QString retryText() const;
    [[nodiscard]] QString laterText() const;
    [[nodiscard]] QString openSettingsText() const;
    [[nodiscard]] QAbstractItemModel* findings() { return &findings_; }

    void setShown(bool isShown);

    Q_INVOKABLE void retry();
    Q_INVOKABLE void openSettings(int row);
    Q_INVOKABLE void dismiss();

signals:
    void isNeededChanged();
    void findingsChanged();

private:
    OnboardingModel& model_;
    FindingList findings_;
    Subscription neededSubscription_;
    Subscription findingsSubscription_;
};

}  // namespace settings_view
}  // namespace orvel

#pragma once
#include "UninstallerReport.h"
#include <QAbstractListModel>
#include <vector>

namespace quillane {

// What failed, in the order of the report: the last component of the path, and why.
class FailuresModel : public QAbstractListModel {
    Q_OBJECT
  public:
    enum Role : int { kReasonRole = Qt::UserRole + 1 };

    explicit FailuresModel(std::vector<Uninstaller::Failure> failures, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

  private:
    std::vector<Uninstaller::Failure> m_failures;
};

} // namespace quillane

// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QStringListModel>

namespace tunedeck {

/// The names of playlists and, if there are more than these, a text after them that cannot be chosen.
class PlaylistNames : public QStringListModel {
public:
    using QStringListModel::QStringListModel;

    /// `rest` is the text. Empty if there are no more playlists.
    void setNames(const QStringList &names, const QString &rest)
    {
        m_hasRest = !rest.isEmpty();
        setStringList(m_hasRest ? names + QStringList{rest} : names);
    }

    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override
    {
        const bool isRest = m_hasRest && index.row() == rowCount() - 1;
        return isRest ? Qt::ItemFlags(Qt::ItemNeverHasChildren) : QStringListModel::flags(index);
    }

private:
    bool m_hasRest = false;
};

} // namespace tunedeck

#pragma once

#include <QHash>
#include <QSharedData>
#include <QString>
#include <vector>

namespace orvel {

// The keys of an object in order of arrival, each once. Objects with the same keys in the same order may
// share them.
class JsonKeys : public QSharedData
{
public:
    void append(const QString &key);
    void removeAt(qsizetype place);
    // Returns -1 for a key that is not there.
    qsizetype indexOf(QStringView key) const;
    const std::vector<QString> &names() const { return m_names; }

private:
    void buildIndex();

    std::vector<QString> m_names;
    QHash<QStringView, qsizetype> m_places; // only of many keys; the views are of m_names' texts
};

} // namespace orvel

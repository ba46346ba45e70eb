#pragma once

#include <QListWidget>

#include <string>

namespace veilkeep {

// Where looking for items begins: the user's own folders, the root, volumes that come and go.
class PlaceList : public QListWidget {
    Q_OBJECT

public:
    explicit PlaceList(QWidget* parent = nullptr);

    void setCurrentPlace(const std::string& path); // marks it where it is one of them

signals:
    void placeChosen(const std::string& path);

private:
    void add(const std::string& path, const QString& name, const QIcon& icon);
};

} // namespace veilkeep

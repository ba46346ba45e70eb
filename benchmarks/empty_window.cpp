// The yardstick of programs with windows: an empty one, as large and where the main window lies.

#include <QApplication>
#include <QWidget>

int main(int count, char** arguments) {
    const QApplication application(count, arguments);
    QWidget window;
    window.setGeometry(140, 150, 1120, 700);
    window.show();
    return QApplication::exec();
}

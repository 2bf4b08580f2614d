#include <QApplication>
#include <QWidget>

/// What any program with this toolkit costs: a bare window of the task window's size.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QWidget window;
    window.resize(520, 160);
    window.show();
    return QApplication::exec();
}

#include <QApplication>
#include <QWidget>

#include <cstdlib>

/// What any program with this toolkit costs: a bare window. bare_window WIDTH HEIGHT
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QWidget window;
    if (argc > 2)
        window.resize(std::atoi(argv[1]), std::atoi(argv[2]));
    window.show();
    return QApplication::exec();
}

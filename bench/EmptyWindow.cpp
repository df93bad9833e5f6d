#include <QApplication>
#include <QWidget>

// The yardstick of StartFigures.cpp: nothing but a window, as large as ours at the first start.
int main(int argc, char* argv[]) {
    const QApplication app(argc, argv);
    QWidget window;
    constexpr QSize kSize(1224, 740);
    window.resize(kSize);
    window.show();
    return QApplication::exec();
}

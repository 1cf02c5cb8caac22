#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QMainWindow frame;
    frame.setWindowTitle("Pairview Utility ");
    frame.show();
    return app.exec();
}

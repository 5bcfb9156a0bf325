# SPDX-License-Identifier: GPL-3.0-or-later
# Headers that many sources include, compiled once for all of them: to read them anew takes longer than most sources'
# own text. The release build of src goes without, so that a source that lacks an include is noticed.
set(velmora_common_headers
    <algorithm> <array> <functional> <memory>
    <QAction> <QApplication> <QComboBox> <QDir> <QFile> <QGroupBox> <QHeaderView> <QLabel> <QLineEdit> <QMdiArea>
    <QMessageBox> <QPainter> <QPushButton> <QSettings> <QTableWidget> <QTimer> <QToolBar> <QVBoxLayout>)

# GCC tells a compiler cache of a compiled header only when it is asked to.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    set(velmora_header_options -fpch-preprocess)
endif()

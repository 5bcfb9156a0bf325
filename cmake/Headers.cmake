# SPDX-License-Identifier: GPL-3.0-or-later
# Headers that many sources include, compiled once for all of them: to read them anew takes longer than most sources'
# own text. The release build of src goes without, so that a source that lacks an include is noticed.
set(velmora_common_headers
    <functional> <memory>
    <QApplication> <QComboBox> <QDir> <QFile> <QHeaderView> <QLabel> <QLineEdit> <QMdiArea> <QMessageBox>
    <QPushButton> <QSettings> <QTableWidget> <QTimer> <QToolBar>)

# GCC tells a compiler cache of a compiled header only when it is asked to.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    set(velmora_header_options -fpch-preprocess)
endif()

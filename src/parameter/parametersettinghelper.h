// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog in which one parameter is set: its attributes, its value, and for a code the form that composes
// the value. Main thread; made at each double-click by the table that is its parent and goes with it.
#pragma once

#include "parameter/valuecheck.h"

#include <QDialog>
#include <QStringList>

class BitFieldFormView;
class QFrame;
class QGridLayout;
class QLayout;
class QLineEdit;

class ParameterSettingHelper : public QDialog
{
    Q_OBJECT

public:
    // rowValues: the row's code and the texts of its table columns; rowDetails: its detail lines.
    ParameterSettingHelper(QStringList rowValues, QStringList rowDetails, QWidget *parent = nullptr);

    // What is wrong with a catalogue resource, as the user is told it; empty when it can be read.
    static QString catalogueFailure(const QString &path);

signals:
    // The text to show in the table, and whether it went to the working memory only. "vlaue" is so spelt.
    void setParamValue(QString vlaue, bool setColor);
    void writeDataToServo(QStringList dataList, bool isWriteRAM);

public slots:
    void getParamValue();
    void writeToServo();
    // Takes the choice of the form's combo box that has sent the signal.
    void NewComboxcurrentIndexChanged(int index);

private:
    void buildWindow();
    void addAttributes(QGridLayout *grid);
    void addFlags(QGridLayout *grid);
    QLayout *buildValueRow();
    QLayout *buildButtons();
    void buildForm();
    void showValueAsLabel();
    void orderTabs();
    void finishWindow();
    void checkCatalogue();
    void takeValue(bool isWriteRAM);
    void refuse(const ValueCheck &check);
    bool isClosedToWrites() const;

    const QStringList rowValues;  // places as in RowValue
    const QStringList rowDetails; // lines of the form
    QLineEdit *valueEdit = nullptr;
    QFrame *formFrame = nullptr;
    BitFieldFormView *formView = nullptr; // null for a parameter without a form
};

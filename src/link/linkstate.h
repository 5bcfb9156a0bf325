// SPDX-License-Identifier: GPL-3.0-or-later
// What windows may know of the link without knowing its worker. Free functions; any thread.
#pragma once

// The device is open and the link has not been given up: the one test of whether it makes sense to ask.
bool isLinkOpen();

// A failure was told to the user, and the link is being brought back without a word.
bool isLinkReconnecting();

// A capture of the scope runs: every chunk of its stream counts as an answer.
bool isScopeStreamRunning();

// How often the link has written a request again. A repeated request may be answered twice, and the second
// answer be taken for that of the next request.
int linkRepeats();

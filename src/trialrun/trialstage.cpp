// SPDX-License-Identifier: GPL-3.0-or-later
#include "trialrun/trialstage.h"

#include <algorithm>
#include <array>

namespace {

using S = TrialStage;
using E = TrialEnd;

constexpr std::array<TrialStageRule, 19> rules{{
    // stage, saves, fills, expectsEdits, end
    {S::Idle, false, false, true, E::Nothing},
    {S::Saving, true, false, true, E::SetUp},
    {S::SettingUp, false, false, true, E::ReadJog},
    {S::Restoring, false, false, false, E::Nothing},
    {S::ServoOn, false, false, true, E::Nothing},
    {S::ServoOff, false, false, true, E::Nothing},
    {S::ReadingJog, false, true, true, E::JogRead},
    {S::Polling, false, false, true, E::Nothing},
    {S::EnteringStepThree, false, false, true, E::Nothing},
    {S::ReadingOnce, false, true, false, E::TableRead},
    {S::ReadingContinuous, false, true, false, E::Mirror},
    {S::RunForward, false, false, true, E::Nothing},
    {S::RunRollback, false, false, true, E::Nothing},
    {S::ContinuousRun, false, false, true, E::Nothing},
    {S::ContinuousPause, false, false, true, E::Nothing},
    {S::WritingCellOnce, false, false, true, E::Nothing},
    {S::WritingCellContinuous, false, false, true, E::Nothing},
    {S::WritingTableContinuous, false, false, true, E::Nothing},
    {S::WritingTableOnce, false, false, true, E::Nothing},
}};

} // namespace

const TrialStageRule &trialStageRule(TrialStage stage)
{
    return *std::find_if(rules.begin(), rules.end(),
                         [stage](const TrialStageRule &rule) { return rule.stage == stage; });
}

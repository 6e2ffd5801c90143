# SPDX-License-Identifier: MIT
quorvell_fuzz(alarmMark USES reminding)

# SPDX-License-Identifier: MIT
# Its texts have some hundred bytes and take milliseconds, twenty times as many under the sanitizer on a busy computer.
quorvell_fuzz(ics SECONDS 3 USES agenda)

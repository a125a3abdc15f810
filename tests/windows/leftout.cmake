# The tests that are left out on Windows, and why.
set(ZORVAN_LEFT_OUT_ON_WINDOWS
    monkey_long_1    # Its 20,000 steps take too long under Wine; the other walks are taken.
    tst_launch       # The program starts as it is installed, and windows_journey starts it so.
    tst_nofonts      # Windows always has fonts.
    tst_preferences  # The preferences are in no file; tst_registry takes the place of this test.
)
# These are not even built: they are of what Windows does not have.
#   tst_runtimefolder                          a session's runtime folder
#   tst_badplaces, tst_company, tst_crashstates, tst_diskcommits, tst_failingdisk, tst_kills,
#   tst_oddfiles                               the file with the preferences; see tst_registry
#   soak                                       memory as Linux counts it
#   hardened                                   ELF; windows_installer checks the flags of PE files
#   e2e_*, desktop_*                           X11 and Wayland; see windows_journey
#   packaging_*                                what Linux desktops are told; see windows_installer

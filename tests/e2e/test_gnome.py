"""On desktops with GTK, which reads the desktop's settings for Qt, in the program's process."""


def test_a_screen_reader_sees_one_program(learner):
    learner.environment = {"XDG_CURRENT_DESKTOP": "GNOME"}
    learner.start_again()
    assert any("libgtk-3" in file for file in learner.program.mapped_files())
    assert len(learner.program.applications()) == 1
    learner.quit()

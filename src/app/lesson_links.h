#pragma once

// Says what each "show me" link of the lessons does: which screen it opens
// and the commands it gives there, the same menu items, buttons, scroll
// bars and typed answers a pupil would use. Start-up calls it with the
// routes; so does every test that opens screens.
void connectLessonLinks();

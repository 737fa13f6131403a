#pragma once

// Tells the screens below the shell where their ways lead: the main menu
// and the data screen as places to go back to, and the screens the bench
// asks for, and the lessons' "show me" links. Start-up calls it; so does every test that opens screens.
void connectRoutes();

#pragma once

/// Fills the platform's table with the controllers that are opened by name.
void fillControllerTable();

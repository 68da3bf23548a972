namespace embedded {}

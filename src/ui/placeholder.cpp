namespace{}

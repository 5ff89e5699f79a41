s/cload=30f/cload=31f/

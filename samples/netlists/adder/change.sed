s/cload=10f/cload=10.5f/

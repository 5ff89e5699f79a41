s/is=1e-12/is=2e-12/

s/re=1k/re=1.02k/
s/foreach t 27 85/foreach t 27 85 125/

select 'open
